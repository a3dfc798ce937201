# The tests of the mutants' program: which come to which place, how long they take, and which fail.

import hashlib
import json
import os
import re
import shutil
import signal
import subprocess
import threading
import time
from collections import Counter, defaultdict
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, replace
from pathlib import Path

from rooms import concerns, is_of_pixels, place_for, targets

# A test that takes so many times its normal time, and longer than this many seconds, hangs.
PATIENCE = 6
SHORTEST_PATIENCE = 15
# Seconds; what is quicker runs together with others of its class, which spares their starts.
QUICK = 1.5
# Seconds; of a quick run what takes longer is left out, and of the rest what comes to the file among much
# else, when together they take longer than this.
SLOW = 5.0
HASTE = 20.0
# As many bytes as there can be mutants, as mutated.h has it.
MOST = 65536
# Those of a file follow each other.
NUMBERS_OF_FILE = 500
# What a mutant may want of the machine.
LIMITS = ["prlimit", "--as=12000000000", "--fsize=5000000000", "--core=0"]
FAILURE = re.compile(rb"^(?:FAIL!|XPASS)\s*: \w+::(\w+)")


@dataclass(frozen=True)
class Test:
    """A function of a test class, or a row of it."""

    target: str
    test: str  # as CTest names the class
    function: str
    command: tuple  # for the class
    environment: tuple

    def name(self):
        return f"{self.test}::{self.function}"

    def is_scaled(self):
        return any(value.startswith("QT_SCALE_FACTOR=") for value in self.environment)


class Runner:
    def __init__(self, place, workshop, jobs, is_hasty):
        self.jobs = jobs
        self.is_hasty = is_hasty
        self.place = place
        self.folder = workshop.folder
        self.times = {}
        self.reached = {}  # by test, the numbers of the mutants
        self.killers = defaultdict(Counter)  # by file, the names of classes
        self.tests = []
        self.running = set()

    def end(self):
        """Ends all tests that run."""
        for process in tuple(self.running):
            end_group(process)

    def listed(self):
        """All functions of the classes that CTest knows."""
        found = json.loads(subprocess.run(
            ["ctest", "--show-only=json-v1"], cwd=self.folder, check=True,
            capture_output=True, text=True).stdout)["tests"]
        for entry in found:
            target = Path(entry.get("command", ["none"])[0]).name
            properties = {each["name"]: each["value"] for each in entry["properties"]}
            if target not in targets() or "WORKING_DIRECTORY" not in properties:
                continue
            test = Test(target, entry["name"], "", tuple(entry["command"]),
                        tuple(properties.get("ENVIRONMENT", [])))
            yield from self.functions(test)

    def functions(self, test):
        if is_of_pixels(test.test):
            # A quick row that fails spares the slow ones.
            lines = self.said(test, "-datatags").splitlines()
            names = [":".join(line.split(" ", 2)[1:]) for line in lines]
        else:
            names = [line.strip().removesuffix("()") for line in self.said(test, "-functions").splitlines()]
        for name in names:
            if name:
                yield replace(test, function=name)

    def said(self, test, option):
        return subprocess.run([*test.command, option], env={**os.environ, **self.surroundings(test, 0)},
                              check=True, capture_output=True, text=True).stdout

    def surroundings(self, test, worker):
        environment = dict(value.split("=", 1) for value in test.environment)
        scratch = self.place / f"worker{worker}"
        for name, folder in (("HOME", "home"), ("TMPDIR", "tmp")):
            environment[name] = str(scratch / folder)
        return environment

    def measure(self, rooms, names):
        """Notes how long each test of the rooms takes where nothing is changed, and where it comes to; with
        names, only of those that have one of them in theirs. That of an unchanged executable is known from
        an earlier run."""
        notes = self.place / "reached.json"
        known = json.loads(notes.read_text()) if notes.exists() else {}
        wanted = [test for test in self.listed() if any(concerns(test, room) for room in rooms)
                  and (not names or any(name in test.name() for name in names))]
        for target in {test.target for test in wanted}:
            executable = next(test.command[0] for test in wanted if test.target == target)
            digest = hashlib.sha256(Path(executable).read_bytes()).hexdigest()
            if known.get(target, {}).get("digest") != digest:
                known[target] = {"digest": digest, "tests": {}}
        missing = [test for test in wanted if test.name() not in known[test.target]["tests"]]
        if missing:
            print(f"Measuring {len(missing)} tests", flush=True)
        groups = [missing[worker :: self.jobs] for worker in range(self.jobs)]

        def measure_group(worker):
            for test in groups[worker]:
                self.clear_reached(worker)
                begin = time.monotonic()
                failed = self.failure([test], 600, 0, worker) is not None
                known[test.target]["tests"][test.name()] = {
                    "time": time.monotonic() - begin, "failed": failed,
                    "reached": self.read_reached(worker)}

        with ThreadPoolExecutor(self.jobs) as pool:
            list(pool.map(measure_group, range(self.jobs)))
        notes.write_text(json.dumps(known))
        for test in wanted:
            note = known[test.target]["tests"][test.name()]
            if note["failed"]:
                print(f"{test.name()} fails without a mutant, and is left out.", flush=True)
                continue
            if self.is_hasty and note["time"] > SLOW:
                continue
            self.tests.append(test)
            self.times[test] = note["time"]
            self.reached[test] = frozenset(note["reached"])

    def reached_file(self, worker):
        return self.place / f"worker{worker}" / "reached"

    def clear_reached(self, worker):
        self.reached_file(worker).parent.mkdir(exist_ok=True)
        self.reached_file(worker).write_bytes(bytes(MOST))

    def read_reached(self, worker):
        return [number for number, byte in enumerate(self.reached_file(worker).read_bytes()) if byte]

    def groups(self, mutant, tests):
        """Those that run together: the functions of a class that are quick, or a slow one. Those that may
        fail first come first: named after the file, then what has killed in it, then those of the room;
        those at the screen's scale before the others, and the quick ones before the slow ones."""
        found = defaultdict(list)
        for test in tests:
            is_quick = self.times[test] < QUICK
            found[test.test, "" if is_quick else test.function].append(test)
        name = Path(mutant.file).stem
        return sorted(found.values(), key=lambda group: (
            name not in group[0].test, -self.killers[mutant.file][group[0].test],
            place_for(group[0], mutant.room()), group[0].is_scaled(), sum(self.times[test] for test in group)))

    def executables(self, room):
        return {test.target for test in self.tests if concerns(test, room)}

    def fate(self, mutant, worker):
        tests = [test for test in self.tests
                 if mutant.number in self.reached[test] and concerns(test, mutant.room())]
        if self.is_hasty:
            tests = self.focused(tests, mutant)
        return self.fate_with(mutant, tests, mutant.number, worker) if tests else "not reached"

    def focused(self, tests, mutant):
        """Those that are named after the mutant's file, and then those that look most at it, as far as they
        are quick."""
        name = Path(mutant.file).stem

        def focus(test):
            in_file = sum(number // NUMBERS_OF_FILE == mutant.number // NUMBERS_OF_FILE
                          for number in self.reached[test])
            return in_file / len(self.reached[test])

        found = []
        time_left = HASTE
        for test in sorted(tests, key=lambda test: (name in test.test, focus(test)), reverse=True):
            if self.times[test] <= time_left:
                time_left -= self.times[test]
                found.append(test)
        return found

    def fate_alone(self, mutant, numbers):
        """That of a mutant that is the whole program, by the tests that come near its place: to one of the
        numbers, which are those of its file. A constant of a header is near wherever it is named."""
        is_header = mutant.file.endswith(".h")
        tests = [test for test in self.tests if concerns(test, mutant.room())
                 and (is_header or not self.reached[test].isdisjoint(numbers))]
        return self.fate_with(mutant, tests, 0, 0) if tests else "not reached"

    def fate_with(self, mutant, tests, number, worker):
        self.clear_reached(worker)
        for group in self.groups(mutant, tests):
            limit = max(SHORTEST_PATIENCE, PATIENCE * sum(self.times[test] for test in group))
            killer = self.sure_failure(group, limit, number, worker)
            if 0 in self.read_reached(worker):
                return "not compiled"
            if killer:
                self.killers[mutant.file][group[0].test] += 1
                return f"killed by {killer}"
        return "survived"

    def sure_failure(self, group, limit, number, worker):
        """A test that fails once only has failed for another reason."""
        for _ in range(3):
            failed = self.failure(group, limit, number, worker)
            if failed is None:
                return None
            named = [test for test in group if test.function == failed]
            if not named or self.failure(named, limit, number, worker) is not None:
                return f"{group[0].test}::{failed}"
        return None

    def failure(self, group, limit, number, worker):
        """The name of the function that fails, or what else happens: "crash" or "hang". None if all is
        well. The tests, all of a class, are not heard to their end."""
        environment = {**os.environ, **self.surroundings(group[0], worker),
                       "PLUMARA_MUTANT": str(number), "PLUMARA_REACHED": str(self.reached_file(worker))}
        for folder in ("HOME", "TMPDIR"):
            shutil.rmtree(environment[folder], ignore_errors=True)
            os.makedirs(environment[folder])
        place = self.place / f"worker{worker}" / "here"
        place.mkdir(exist_ok=True)
        command = [*LIMITS, *group[0].command, *(test.function for test in group)]
        with subprocess.Popen(command, cwd=place, env=environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              start_new_session=True) as process:
            late = threading.Event()

            def end():
                late.set()
                end_group(process)

            watch = threading.Timer(limit, end)
            watch.start()
            self.running.add(process)
            failed = None
            try:
                failed = next((match[1].decode() for match in map(FAILURE.match, process.stdout) if match),
                              None)
            finally:
                watch.cancel()
                end_group(process)
                self.running.discard(process)
        if late.is_set():
            return "hang"
        return failed or (None if process.returncode == 0 else "crash")


def end_group(process):
    """Ends the test and all that it has started."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
