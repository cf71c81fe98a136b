"""Which suites are likely to notice a change: those whose files speak of what the changed file declares."""

import re
from collections import Counter

WORD = re.compile(r"\b[A-Za-z_]\w{3,}\b")
SUITE = re.compile(r"^TEST(?:_F|_P)?\((\w+),", re.M)
# Files that are taken, and what the file's own name, its header and the function around the change are worth
# beside the words that they share.
FILES = 10
SAME_NAME, SAME_WORD_OF_NAME, SAME_HEADER, SAME_FUNCTION = 3.0, 0.7, 2.0, 2.0


class Likely:
    """Reads the tests once."""

    def __init__(self, root, programs):
        self.root = root
        self.files = {}
        for path in sorted((root / "tests").glob("*/*_test.cpp")):
            text = path.read_text(encoding="utf-8")
            suites = set(SUITE.findall(text))
            if suites:
                self.files[path] = (f"test_{path.parent.name}", suites, set(WORD.findall(text)), text)
        self.frequency = Counter(word for _, _, words, _ in self.files.values() for word in words)
        self.suites = {program: set(times) for program, times in programs.times.items()}

    def _declared(self, file, text):
        """Names that the source and its header bring into the world, and how much each tells."""
        names = set(re.findall(r"^(?:\S.*?[ *&])?(?:\w+::)?([A-Z]\w+)\(", text, re.M))
        header = (self.root / file).with_suffix(".h")
        if header.exists():
            words = header.read_text(encoding="utf-8")
            names |= set(re.findall(r"\b(?:class|struct|enum class) (\w+)", words))
            names |= set(re.findall(r"\b([A-Z]\w+)\(", words))
        return names

    def _function_around(self, text, line):
        for words in reversed(text.splitlines()[:line]):
            found = re.match(r"(?:  )?[\w:<>*&].*?\b(\w+)\(.*", words)
            if found and not words.startswith("    "):
                return found.group(1)
        return None

    def suites_for(self, change, text, reached):
        """By program, the suites that are tried first, as patterns of the test library."""
        names = self._declared(change.file, text)
        around = self._function_around(text, change.line)
        stem = change.file.rsplit("/", 1)[1].removesuffix(".cpp")
        header = change.file.removeprefix("src/").removesuffix(".cpp") + ".h"
        scores = []
        for path, (program, suites, words, tests) in self.files.items():
            if program not in reached:
                continue
            score = sum(1 / self.frequency[name] for name in names if name in words)
            score += SAME_NAME * (path.stem.removesuffix("_test") in (stem, stem + "s") or path.stem.startswith(stem))
            score += SAME_WORD_OF_NAME * len(set(path.stem.split("_")) & set(stem.split("_")))
            score += SAME_HEADER * (f'"{header}"' in tests)
            score += SAME_FUNCTION * (around is not None and around in words)
            if score > 0:
                scores.append((score, path, program, suites))
        scores.sort(key=lambda entry: (-entry[0], entry[1]))
        chosen = {}
        for _, _, program, suites in scores[:FILES]:
            for suite in self.suites[program]:
                # A suite with parameters is listed as "Instance/Suite" or as "Suite/Instance".
                if suites & set(suite.split("/")):
                    chosen.setdefault(program, set()).add(f"{suite}.*")
        return chosen
