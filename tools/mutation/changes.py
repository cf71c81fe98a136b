"""The changes of a source tree, the order in which they are tried, and those that no test could notice."""

import hashlib
import re
from collections import Counter
from pathlib import Path

from .operators import COSMETIC, OPERATORS, code_only, replacement_of


class Change:
    """One small change: a place in a file and what stands there instead."""

    def __init__(self, file, operator, start, end, replacement, text):
        self.file, self.operator = file, operator
        self.start, self.end, self.replacement = start, end, replacement
        self.line = text.count("\n", 0, start) + 1
        line_start = text.rfind("\n", 0, start) + 1
        line_end = text.find("\n", end)
        self.before = " ".join(text[line_start:line_end].split())
        self.after = " ".join((text[line_start:start] + replacement + text[end:line_end]).split())
        # The folder of src that it is in, and the test program of the room that it is in there.
        self.folder = Path(file).parts[1]
        self.program = f"test_{self.folder}_widgets" if "/widgets/" in str(file) else f"test_{self.folder}"
        self.repeat = 0  # how many changes of the same words stand before this one in its file

    def key(self):
        """The same for the same change, whatever else has changed in the file."""
        words = f"{self.file}|{self.operator}|{self.before}|{self.after}|{self.repeat}"
        return hashlib.sha1(words.encode()).hexdigest()[:16]

    def place(self):
        return f"{self.file}:{self.line} {self.operator}"

    def __str__(self):
        return f"{self.place()}\n  - {self.before}\n  + {self.after}"


def changes_of(file, text):
    """Every change that the operators can make in one file."""
    code = code_only(text)
    seen = Counter()
    for operator in OPERATORS:
        for found in operator(code):
            change = Change(file, operator.__name__, found[0], found[1], replacement_of(found, text), text)
            if COSMETIC.search(change.before):
                continue
            words = (change.operator, change.before, change.after)
            change.repeat = seen[words]
            seen[words] += 1
            yield change


def drawn(root, folder, seed):
    """All changes below src, or below one folder of it, in the order in which they are tried: the operators in
    turn, places by chance. A place keeps its rank when other files change."""
    lists = {operator.__name__: [] for operator in OPERATORS}
    for path in sorted((root / "src").rglob("*.cpp")):
        file = path.relative_to(root).as_posix()
        if folder and Path(file).parts[1] != folder:
            continue
        for change in changes_of(file, path.read_text(encoding="utf-8")):
            lists[change.operator].append(change)
    for changes in lists.values():
        changes.sort(key=lambda change: hashlib.sha1(f"{seed}|{change.key()}".encode()).digest())
    longest = max((len(changes) for changes in lists.values()), default=0)
    return [changes[i] for i in range(longest) for changes in lists.values() if i < len(changes)]


class Exceptions:
    """Changes that are none to whoever uses the program, each with the reason.

    The file holds blocks of four lines or more: the place without its line number ("src/a/b.cpp comparison"), the line
    before ("- ..."), the line after ("+ ..."), the reason. A line that begins with "#" is a comment.
    """

    def __init__(self, path):
        self.reasons = {}
        self.unused = set()
        text = re.sub(r"^#.*\n", "", path.read_text(encoding="utf-8"), flags=re.M) if path.exists() else ""
        for block in filter(None, (block.strip() for block in re.split(r"\n\s*\n", text))):
            lines = [line.strip() for line in block.splitlines()]
            if len(lines) < 4 or not lines[1].startswith("- ") or not lines[2].startswith("+ "):
                raise ValueError(f"{path.name}: a block is not place, - before, + after, reason:\n{block}")
            self.reasons[(lines[0], lines[1][2:], lines[2][2:])] = " ".join(lines[3:])
        self.unused = set(self.reasons)

    def reason(self, change):
        """Why nobody could notice it; None for all others."""
        words = (f"{change.file} {change.operator}", change.before, change.after)
        self.unused.discard(words)
        return self.reasons.get(words)
