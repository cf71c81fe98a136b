"""The test programs of a finished build folder, linked anew with one object changed.

Nothing of the build folder is written to, but for the program itself (src/zelmar), which a test starts by its path:
that one is put back behind each change. A changed source is compiled from a scratch folder by its own command, and its
object stands before the libraries in the link, so that theirs is not taken.
"""

import json
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

COMPILE_LIMIT_SECONDS = 600
# A loop that never ends may also never stop to allocate.
MEMORY_LIMIT_BYTES = 8 << 30
# How much longer than without the change a run may take: of the processor, and by the clock, which other work on the
# machine slows. Each is the factor and what is added, in seconds.
CPU_LIMIT = (4, 20)
WALL_LIMIT = (6, 90)

MAIN_PROGRAM = "src/zelmar"
# The test programs that start it.
STARTS_MAIN_PROGRAM = ("test_app",)


TIME_LIMIT = "time limit"


class LinkError(Exception):
    """A program cannot be linked with the change."""


class Outcome:
    """How a run of tests ended: well, or at a test and in a way."""

    def __init__(self, passed, test="", way=""):
        self.passed, self.test, self.way = passed, test, way


def run(command, wall_seconds, cpu_seconds=None, cwd=None, output=subprocess.DEVNULL, environment=None):
    """The command's exit status; None when it took too long. Its whole process group ends with it."""

    def limits():
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT_BYTES, MEMORY_LIMIT_BYTES))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if cpu_seconds is not None:
            resource.setrlimit(resource.RLIMIT_CPU, (int(cpu_seconds) + 1, int(cpu_seconds) + 2))

    process = subprocess.Popen(command, cwd=cwd, env=environment, stdout=output, stderr=subprocess.STDOUT,
                               stdin=subprocess.DEVNULL, start_new_session=True, preexec_fn=limits)
    try:
        return process.wait(timeout=wall_seconds)
    except subprocess.TimeoutExpired:
        return None
    finally:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()


def outcome(status, log):
    """What a finished run of a test program tells."""
    if status == 0:
        return Outcome(True)
    failed = re.search(r"^\[  FAILED  \] ([\w/]+\.[\w/]+)", log, re.M)
    if failed:
        return Outcome(False, failed.group(1), "failed")
    begun = re.findall(r"^\[ RUN      \] ([\w/]+\.[\w/]+)", log, re.M)
    late = status is None or status in (-signal.SIGXCPU, -signal.SIGKILL)
    way = TIME_LIMIT if late else f"ended with {status}"
    return Outcome(False, begun[-1] if begun else "", way)


class Programs:
    """The build folder `build`, and what it takes to link and run its test programs with one object changed."""

    def __init__(self, root, build, work):
        self.root, self.build, self.work = root, build, work
        self.folders = sorted(path.stem[len("test_"):] for path in (build / "tests").glob("test_*")
                              if path.is_file() and os.access(path, os.X_OK))
        self.commands = {}
        for entry in json.loads((build / "compile_commands.json").read_text()):
            self.commands[Path(entry["file"]).resolve()] = shlex.split(entry["command"])
        self.links = {f"tests/test_{folder}": self._link_command(f"tests/test_{folder}") for folder in self.folders}
        self.links[MAIN_PROGRAM] = self._link_command(MAIN_PROGRAM)
        self.linker = ["-fuse-ld=lld"] if shutil.which("ld.lld") else []
        work.mkdir(parents=True, exist_ok=True)
        self._restore_main_program()
        self.stamp = self._stamp()
        self.members = self._kept("members", self._members)
        self.times = {}

    # --- The build folder as it stands ---

    def _link_command(self, target):
        text = subprocess.check_output(["ninja", "-C", str(self.build), "-t", "commands", "-s", target], text=True)
        for step in text.strip().splitlines()[-1].split(" && "):
            if f" -o {target} " in step:
                return shlex.split(step)
        raise SystemExit(f"mutate: {self.build} has no command that links {target}")

    def _stamp(self):
        """Changes when anything is built anew."""
        parts = []
        for target in sorted(self.links):
            state = (self.build / target).stat()
            parts.append(f"{target} {state.st_size} {state.st_mtime_ns}")
        return "\n".join(parts)

    def unchanged(self):
        return self._stamp() == self.stamp

    def _kept(self, name, make):
        """The value that `make` gives, kept for as long as the build folder stays as it is."""
        path = self.work / f"{name}.json"
        if path.exists():
            kept = json.loads(path.read_text())
            if kept["stamp"] == self.stamp:
                return kept["value"]
        value = make()
        path.write_text(json.dumps({"stamp": self.stamp, "value": value}))
        return value

    def _members(self):
        """The objects that each program holds: "tune.cpp.o" and the like."""
        members = {}
        for target, command in self.links.items():
            words = self._to(command, target, self.work / "traced") + ["-Wl,--trace"]
            traced = subprocess.run(words + self.linker, cwd=self.build, text=True, stdout=subprocess.PIPE,
                                    stderr=subprocess.STDOUT)
            if traced.returncode != 0:
                raise SystemExit(f"mutate: {target} cannot be linked:\n{traced.stdout}")
            members[target] = sorted(set(re.findall(r"([\w.]+\.cpp\.o)\b", traced.stdout)))
        (self.work / "traced").unlink()
        return members

    @staticmethod
    def _to(command, target, output):
        return [str(output) if word == target else word for word in command]

    def holding(self, file):
        """The test programs that a change of the source can reach."""
        member = Path(file).name + ".o"
        reached = []
        for folder in self.folders:
            program = f"test_{folder}"
            targets = [f"tests/{program}"] + ([MAIN_PROGRAM] if program in STARTS_MAIN_PROGRAM else [])
            if any(member in self.members[target] for target in targets):
                reached.append(program)
        return reached

    # --- Compiling ---

    def compile(self, file, text, name):
        """The object of the source with that text; None when it does not compile."""
        source = self.work / "source" / file
        source.parent.mkdir(parents=True, exist_ok=True)
        source.write_text(text, encoding="utf-8")
        built = self.root / file
        command = self.commands[built.resolve()]
        output = self.work / name
        output.unlink(missing_ok=True)
        words = list(command)
        words[words.index("-o") + 1] = str(output)
        words = [str(source) if Path(word) == built or Path(word) == built.resolve() else word for word in words]
        if run(words + ["-w"], COMPILE_LIMIT_SECONDS, cwd=self.build) != 0:
            return None
        return output

    def built_object(self, file):
        """The object of the source in the build folder, which must be no older."""
        words = self.commands[(self.root / file).resolve()]
        built = self.build / words[words.index("-o") + 1]
        if not built.exists() or built.stat().st_mtime_ns < (self.root / file).stat().st_mtime_ns:
            raise SystemExit(f"mutate: {file} was changed after it was built; build first")
        return built

    # --- Linking and running ---

    def link(self, target, file, changed):
        """The program with the changed object in the place of its own."""
        output = self.work / "programs" / Path(target).name
        output.parent.mkdir(exist_ok=True)
        words = self._to(self.links[target], target, output)
        own = [i for i, word in enumerate(words) if word.endswith("/" + Path(file).name + ".o")]
        if own:
            words[own[0]] = str(changed)
        else:
            words.insert(1, str(changed))
        if run(words + self.linker, COMPILE_LIMIT_SECONDS, cwd=self.build) != 0:
            raise LinkError(target)
        return output

    def put_main_program(self, file, changed):
        """Lets the tests start the changed program by its path."""
        if Path(file).name + ".o" not in self.members[MAIN_PROGRAM]:
            return
        linked = self.link(MAIN_PROGRAM, file, changed)
        whole = self.work / "whole_program"
        if not whole.exists():
            shutil.copy2(self.build / MAIN_PROGRAM, whole)
        self._replace(linked, self.build / MAIN_PROGRAM)

    def _restore_main_program(self):
        whole = self.work / "whole_program"
        if whole.exists():
            self._replace(whole, self.build / MAIN_PROGRAM)
            whole.unlink()

    @staticmethod
    def _replace(source, target):
        shutil.copy2(source, f"{target}.new")
        os.replace(f"{target}.new", target)

    def run_tests(self, program, path, suites=None):
        """Runs the tests of those suites, of all without them, until one fails."""
        expected = self.expected_seconds(program, suites)
        words = [str(path), "--gtest_fail_fast"]
        if suites is not None:
            words.append("--gtest_filter=" + ":".join(sorted(suites)))
        return self._run(words, *(factor * expected + more for factor, more in (CPU_LIMIT, WALL_LIMIT)))

    def _run(self, words, cpu_seconds, wall_seconds):
        # Whatever a changed program writes or deletes is written and deleted here.
        with tempfile.TemporaryDirectory(prefix="mutate-", ignore_cleanup_errors=True) as scratch:
            os.chmod(scratch, 0o1777)
            environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_LOGGING_RULES="*.warning=false",
                               TMPDIR=scratch)
            log = self.work / "log.txt"
            with log.open("w") as output:
                status = run(words, wall_seconds, cpu_seconds, cwd=self.build / "tests", output=output,
                             environment=environment)
            return outcome(status, log.read_text(encoding="utf-8", errors="replace"))

    def restored(self):
        """A context behind which the build folder is as it was."""
        return _Restored(self)

    # --- Times ---

    def measure(self):
        """Runs every program as it stands, for the time of each suite; those that fail by themselves end it all."""
        self.times = self._kept("times", self._measure)

    def _measure(self):
        times = {}
        for folder in self.folders:
            program = f"test_{folder}"
            begin = time.monotonic()
            result = self._run([str(self.build / "tests" / program)], 3600, 3600)
            if not result.passed:
                raise SystemExit(f"mutate: {program} fails without any change: {result.test} {result.way}")
            log = (self.work / "log.txt").read_text(encoding="utf-8", errors="replace")
            suites = re.findall(r"^\[-+\] \d+ tests? from ([\w/]+) \((\d+) ms total\)", log, re.M)
            times[program] = {suite: int(ms) / 1000 for suite, ms in suites}
            print(f"mutate: {program} passes in {time.monotonic() - begin:.0f} s", flush=True)
        return times

    def expected_seconds(self, program, suites=None):
        if suites is None:
            return sum(self.times[program].values())
        names = {pattern.removesuffix(".*") for pattern in suites}
        return sum(seconds for suite, seconds in self.times[program].items() if suite in names)


class _Restored:
    def __init__(self, programs):
        self.programs = programs

    def __enter__(self):
        return self.programs

    def __exit__(self, *failure):
        self.programs._restore_main_program()
