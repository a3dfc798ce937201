# Tries mutants: changes a copy of the sources in one place at a time, and sees whether a test fails.
"""Usage: trial.py [--sample N] [--seed S] [ROOM|FILE|FILE:LINE]...
scripts/mutate tells what it does."""

import argparse
import hashlib
import json
import os
import shutil
import signal
import subprocess
import sys
import threading
import time
from collections import Counter, defaultdict
from dataclasses import dataclass, replace
from pathlib import Path

from equals import Equals
from mutations import mutations

ROOT = Path(__file__).resolve().parents[2]
PLACE = ROOT / "build/mutants"

# The tests that see what a room does, those of the room first: executables, or one test of them.
TESTS_OF_ROOMS = {
    "app": ["app_tests", "tst_startedprogram", "tst_instances"],
    "board": ["board_tests", "home_tests:tst_arrivingboards", "home_tests:tst_openboard"],
    "history": ["history_tests"],
    "home": ["home_tests"],
    "items": ["items_tests", "history_tests"],
    "look": ["home_tests", "board_tests"],
    "painting": ["painting_tests", "board_tests"],
    "storage": ["storage_tests", "board_tests:tst_scarcememory"],
}
# What looks at every pixel again and again, or at several scales, takes longer than all other tests;
# so it is left to the rooms whose work it is about. What looks at pixels is run row by row, so that a
# quick row that fails spares the slow ones.
PIXEL_TESTS = ("tst_canvaspainting",)
ROOMS_OF_PIXELS = {"painting"}
ROOMS_OF_SCALES = {"look", "painting"}
# A test that takes so many times its normal time, and longer than this many seconds, hangs.
PATIENCE = 5
SHORTEST_PATIENCE = 20


@dataclass(frozen=True)
class Test:
    name: str
    command: tuple
    environment: tuple
    folder: str

    def is_scaled(self):
        return any(value.startswith("QT_SCALE_FACTOR=") for value in self.environment)

    def surroundings(self):
        return {**os.environ, **dict(value.split("=", 1) for value in self.environment)}

    def rows(self):
        """The rows of its functions, and its functions without rows, each as a test of its own."""
        listed = subprocess.run([*self.command, "-datatags"], env=self.surroundings(), check=True,
                                capture_output=True, text=True).stdout
        for line in listed.splitlines():
            row = ":".join(line.split(" ", 2)[1:])
            yield replace(self, name=f"{self.name}::{row}", command=(*self.command, row))


@dataclass(frozen=True)
class Mutant:
    file: str
    mutation: object

    def room(self):
        return self.file.split("/")[0]

    def __str__(self):
        return f"{self.file}:{self.mutation.line}: {shortened(self.mutation.change)}"


def shortened(text, length=70):
    return text if len(text) <= length else text[: length - 1] + "…"


class Workshop:
    """The copy of the sources, its build, and the tests in it."""

    def __init__(self):
        self.sources = PLACE / "source"
        self.build_folder = PLACE / "build"
        self.times = {}
        self.killers = defaultdict(Counter)  # by file

    def copy_sources(self):
        """Files that are the same stay as they are, and so does what was built of them."""
        listed = subprocess.run(
            ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            cwd=ROOT, check=True, capture_output=True, text=True).stdout.split("\0")
        wanted = {name for name in listed if name and (ROOT / name).is_file()}
        if self.sources.exists():
            for path in self.sources.rglob("*"):
                if path.is_file() and str(path.relative_to(self.sources)) not in wanted:
                    path.unlink()
        for name in wanted:
            source, copy = ROOT / name, self.sources / name
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)

    def configure(self):
        linkers = [name for name in ("lld", "gold") if shutil.which(f"ld.{name}")]
        options = [f"-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld={linkers[0]}"] if linkers else []
        # As fast to compile as can be without slow tests, of which some look at every pixel.
        self.run(["cmake", "-S", self.sources, "-B", self.build_folder, "-G", "Ninja",
                  "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O1", *options])

    def run(self, command):
        with open(PLACE / "build.log", "w", encoding="utf-8") as log:
            if subprocess.run(command, stdout=log, stderr=log, check=False).returncode:
                sys.exit(f"mutate: the sources as they are do not build; {log.name} tells more.")

    def build_command(self, targets):
        return ["cmake", "--build", self.build_folder, "-j", str(os.cpu_count()), "--target", *targets]

    def build(self, targets):
        self.run(self.build_command(targets))

    def compiles(self, target):
        return subprocess.run(self.build_command([target]), stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, check=False).returncode == 0

    def tests(self, room):
        """The tests of the room that CTest knows, by their executables, which have to be built."""
        names = defaultdict(set)
        for entry in TESTS_OF_ROOMS[room]:
            target, _, name = entry.partition(":")
            names[target].add(name)
        listed = json.loads(subprocess.run(
            ["ctest", "--show-only=json-v1"], cwd=self.build_folder, check=True,
            capture_output=True, text=True).stdout)["tests"]
        found = {target: [] for target in names}
        for test in listed:
            target = Path(test.get("command", ["none"])[0]).name
            properties = {each["name"]: each["value"] for each in test["properties"]}
            if target in found and "unit" in properties.get("LABELS", []):
                found[target].append(Test(test["name"], tuple(test["command"]),
                                          tuple(properties.get("ENVIRONMENT", [])),
                                          properties["WORKING_DIRECTORY"]))
        return {target: [part for test in group
                         if concerns(test, room) and not names[target].isdisjoint(("", test.name))
                         for part in (test.rows() if is_of_pixels(test) else [test])]
                for target, group in found.items()}

    def measure(self, tests):
        """Notes how long the tests take where nothing is changed. That of an unchanged executable is
        known from an earlier run."""
        notes = PLACE / "times.json"
        known = json.loads(notes.read_text()) if notes.exists() else {}
        for target, group in tests.items():
            digest = hashlib.sha256(Path(group[0].command[0]).read_bytes()).hexdigest()
            if known.get(target, {}).get("digest") != digest:
                known[target] = {"digest": digest, "times": {}}
            times = known[target]["times"]
            for test in group:
                if test.name not in times:
                    print(f"Measuring: {test.name}", flush=True)
                    begin = time.monotonic()
                    if fails(test, 600):
                        sys.exit(f"mutate: {test.name} fails without a mutant.")
                    times[test.name] = time.monotonic() - begin
                    notes.write_text(json.dumps(known))
            self.times.update(times)

    def in_order(self, tests, file):
        """Those that may fail first come first: named after the file, then what has killed in it;
        those at the screen's scale before the others, and the quick ones before the slow ones."""
        name = Path(file).stem
        return sorted(tests, key=lambda test: (name not in test.name,
                                               -self.killers[file][test.name],
                                               test.is_scaled(), self.times[test.name]))

    def killer(self, mutant, tests):
        """The test that fails with the mutant, "the compiler", or None where nothing tells of it."""
        for target, group in tests[mutant.room()].items():
            if not self.compiles(target):
                return "the compiler"
            for test in self.in_order(group, mutant.file):
                limit = max(SHORTEST_PATIENCE, PATIENCE * self.times[test.name])
                if fails(test, limit):
                    self.killers[mutant.file][test.name] += 1
                    return test.name
        return None

    def put(self, mutant):
        text = (ROOT / mutant.file).read_text(encoding="utf-8")
        (self.sources / mutant.file).write_text(mutant.mutation.apply(text), encoding="utf-8")

    def restore(self, file):
        shutil.copy(ROOT / file, self.sources / file)


def concerns(test, room):
    return ((room in ROOMS_OF_SCALES or not test.is_scaled())
            and (room in ROOMS_OF_PIXELS or not is_of_pixels(test)))


def is_of_pixels(test):
    return test.name.startswith(PIXEL_TESTS)


def fails(test, limit):
    """Whether the test fails, or takes longer than the limit in seconds. It is not heard to its end."""
    for folder in (value.split("=", 1)[1] for value in test.environment
                   if value.startswith(("HOME=", "TMPDIR="))):
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(folder)
    scratch = Path(test.folder) / "scratch" / "here"
    scratch.mkdir(parents=True, exist_ok=True)
    with subprocess.Popen(test.command, cwd=scratch, env=test.surroundings(),
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, start_new_session=True) as process:
        late = threading.Event()

        def end():
            late.set()
            end_group(process)

        watch = threading.Timer(limit, end)
        watch.start()
        failed = True  # also when the run is broken off here
        try:
            failed = any(line.startswith(b"FAIL!") for line in process.stdout)
        finally:
            watch.cancel()
            if failed:
                end_group(process)
        return process.wait() != 0 or failed or late.is_set()


def end_group(process):
    """Ends the test and all that it has started."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass


def sources_of(room):
    return sorted(str(path.relative_to(ROOT)) for path in (ROOT / room).glob("*")
                  if path.suffix in (".cpp", ".h"))


def mutants_of(argument):
    """The mutants of a room, a file or a line of a file."""
    file, _, line = argument.partition(":")
    files = sources_of(file) if file in TESTS_OF_ROOMS else [file]
    for name in files:
        for mutation in mutations((ROOT / name).read_text(encoding="utf-8")):
            if not line or mutation.line == int(line):
                yield Mutant(name, mutation)


def sample(mutants, size, seed):
    """So many of each room, the same for the same seed, also when other lines have changed."""
    def place(mutant):
        words = (seed, mutant.file, mutant.mutation.code, mutant.mutation.change)
        return hashlib.sha256(repr(words).encode()).hexdigest()

    rooms = defaultdict(list)
    for mutant in mutants:
        rooms[mutant.room()].append(mutant)
    chosen = []
    for room in rooms.values():
        chosen += sorted(room, key=place)[:size] if size else room
    return sorted(chosen, key=lambda mutant: (mutant.file, mutant.mutation.begin))


def try_mutants(mutants, equals, workshop, tests):
    """Returns for each mutant its fate."""
    fates = {}
    for number, mutant in enumerate(mutants, 1):
        begin = time.monotonic()
        if equals.has(mutant.file, mutant.mutation):
            fates[mutant] = "equal"
        else:
            workshop.put(mutant)
            killer = workshop.killer(mutant, tests)
            fates[mutant] = ("not compiled" if killer == "the compiler" else
                             "killed" if killer else "survived")
            fate = f"killed by {killer}" if fates[mutant] == "killed" else fates[mutant]
            print(f"[{number}/{len(mutants)}] {mutant}: {fate}"
                  f" ({time.monotonic() - begin:.0f} s)", flush=True)
            if number == len(mutants) or mutants[number].file != mutant.file:
                workshop.restore(mutant.file)
    return fates


def print_table(fates):
    print("\n| room | mutants | killed | survivors | equal |\n|---|---|---|---|---|")
    rooms = defaultdict(Counter)
    for mutant, fate in fates.items():
        rooms[mutant.room()][fate] += 1
    for room, counts in sorted(rooms.items()):
        tried = counts.total() - counts["not compiled"]
        print(f"| `{room}/` | {tried} | {counts['killed']} | {counts['survived']} | {counts['equal']} |")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sample", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("places", nargs="*")
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))

    places = options.places or sorted(TESTS_OF_ROOMS)
    mutants = list(dict.fromkeys(each for place in places for each in mutants_of(place)))
    mutants = sample(mutants, options.sample, options.seed)
    equals = Equals(ROOT)
    rooms = {mutant.room() for mutant in mutants if not equals.has(mutant.file, mutant.mutation)}
    targets = sorted({entry.partition(":")[0] for room in rooms for entry in TESTS_OF_ROOMS[room]})

    PLACE.mkdir(parents=True, exist_ok=True)
    workshop = Workshop()
    workshop.copy_sources()
    workshop.configure()
    print("Building", flush=True)
    workshop.build(targets or ["plumara_test_main"])
    tests = {room: workshop.tests(room) for room in rooms}
    for group in tests.values():
        workshop.measure(group)
    fates = try_mutants(mutants, equals, workshop, tests)

    print_table(fates)
    survivors = [mutant for mutant, fate in fates.items() if fate == "survived"]
    if survivors:
        print("\nSurvivors, as tests/mutants/equal.txt would name them:")
        for mutant in survivors:
            print(f"\n{mutant.file}\n    {mutant.mutation.code}\n    {mutant.mutation.change}"
                  f"\n    (line {mutant.mutation.line})")
    sys.exit(1 if survivors else 0)


if __name__ == "__main__":
    main()
