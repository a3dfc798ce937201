# Tries mutants: builds them all as one program, and sees for each whether a test fails.
"""Usage: trial.py [--sample N] [--seed S] [--again] [--jobs N] [--quick] [--with TEST]... [ROOM|FILE|FILE:LINE]...
scripts/mutate tells what it does."""

import argparse
import hashlib
import json
import os
import queue
import signal
import sys
import threading
import time
from collections import Counter, defaultdict
from concurrent.futures import ThreadPoolExecutor
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path

from equals import Equals
from mutations import mutations
from rooms import TESTS_OF_ROOMS
from runner import NUMBERS_OF_FILE, Runner
from workshop import Workshop

ROOT = Path(__file__).resolve().parents[2]
PLACE = ROOT / "build/mutants"


@dataclass(frozen=True)
class Mutant:
    number: int
    file: str
    mutation: object

    def room(self):
        return self.file.split("/")[0]

    def key(self):
        return f"{self.file} | {self.mutation.code} | {self.mutation.change}"

    def __str__(self):
        return f"{self.file}:{self.mutation.line}: {shortened(self.mutation.change)}"


def shortened(text, length=70):
    return text if len(text) <= length else text[: length - 1] + "…"


def all_mutants():
    """Those of all rooms. Each file has numbers of its own, from which those of others do not depend."""
    files = sorted(str(path.relative_to(ROOT)) for room in TESTS_OF_ROOMS for path in (ROOT / room).glob("*")
                   if path.suffix in (".cpp", ".h"))
    return [Mutant(place * NUMBERS_OF_FILE + number, file, mutation)
            for place, file in enumerate(files)
            for number, mutation in enumerate(mutations((ROOT / file).read_text(encoding="utf-8")), 1)]


def those_of(mutants, places):
    """The mutants of the rooms, files and lines, in this order; all, where none is named."""
    def is_at(mutant, place):
        return place in (mutant.room(), mutant.file, f"{mutant.file}:{mutant.mutation.line}")

    found = [mutant for place in places for mutant in mutants if is_at(mutant, place)]
    return list(dict.fromkeys(found)) if places else mutants


def sample(mutants, size, seed):
    """So many of each room, the same for the same seed, also when other lines have changed."""
    def place(mutant):
        words = (seed, mutant.file, mutant.mutation.code, mutant.mutation.change)
        return hashlib.sha256(repr(words).encode()).hexdigest()

    rooms = defaultdict(list)
    for mutant in mutants:
        rooms[mutant.room()].append(mutant)
    chosen = {mutant for room in rooms.values() for mutant in sorted(room, key=place)[: size or None]}
    return [mutant for mutant in mutants if mutant in chosen]


class Fates:
    """What became of each mutant: "equal", "killed by ...", "survived", "not compiled" or, where no test
    comes to its place, "not reached". Kept in a file, so that a run goes on where another ended."""

    def __init__(self, again):
        self.path = PLACE / "fates.json"
        self.known = json.loads(self.path.read_text()) if self.path.exists() and not again else {}

    def of(self, mutant):
        return self.known.get(mutant.key(), "")

    def is_settled(self, mutant):
        return self.of(mutant).startswith("killed") or self.of(mutant) == "not compiled"

    def put(self, mutant, fate):
        self.known[mutant.key()] = fate
        text = json.dumps(self.known, indent=0, ensure_ascii=False)
        self.path.with_suffix(".new").write_text(text, encoding="utf-8")
        self.path.with_suffix(".new").replace(self.path)


def try_together(mutants, runner, fates):
    """Several at a time, each by a worker of its own."""
    progress = Progress(mutants, fates)
    workers = queue.SimpleQueue()
    for worker in range(runner.jobs):
        workers.put(worker)

    def attempt(mutant):
        worker = workers.get()
        try:
            with progress.of(mutant) as result:
                result.append(runner.fate(mutant, worker))
        finally:
            workers.put(worker)

    with ThreadPoolExecutor(runner.jobs) as pool:
        for attempted in [pool.submit(attempt, mutant) for mutant in mutants]:
            attempted.result()


def try_alone(mutants, workshop, runner, fates):
    """One after the other, since for each the program is built anew."""
    progress = Progress(mutants, fates)
    for mutant in mutants:
        with progress.of(mutant) as result:
            workshop.put_alone(mutant)
            numbers = {other.number for other in workshop.of_file[mutant.file]}
            compiles = workshop.compiles(runner.executables(mutant.room()))
            result.append(runner.fate_alone(mutant, numbers) if compiles else "not compiled")
            workshop.write(mutant.file)
    if mutants:
        workshop.build()


class Progress:
    def __init__(self, mutants, fates):
        self.count = len(mutants)
        self.done = 0
        self.fates = fates
        self.lock = threading.Lock()

    @contextmanager
    def of(self, mutant):
        """Tells how long the mutant has taken, and what is put into the list that it yields."""
        begin = time.monotonic()
        result = []
        yield result
        with self.lock:
            self.done += 1
            self.fates.put(mutant, result[0])
            print(f"[{self.done}/{self.count}] {mutant}: {result[0]} ({time.monotonic() - begin:.0f} s)",
                  flush=True)


def print_table(mutants, fates):
    print("\n| room | mutants | killed | survivors | equal |\n|---|---|---|---|---|")
    rooms = defaultdict(Counter)
    for mutant in mutants:
        rooms[mutant.room()][fates.of(mutant).split(" by ")[0]] += 1
    for room, counts in sorted(rooms.items()):
        tried = counts.total() - counts["not compiled"]
        survived = counts["survived"] + counts["not reached"]
        print(f"| `{room}/` | {tried} | {counts['killed']} | {survived} | {counts['equal']} |")


def print_survivors(mutants, fates):
    survivors = [mutant for mutant in mutants if fates.of(mutant) in ("survived", "not reached")]
    if survivors:
        print("\nSurvivors, as tests/mutants/equal.txt would name them:")
    for mutant in survivors:
        reached = ", which no test reaches" if fates.of(mutant) == "not reached" else ""
        print(f"\n{mutant.file}\n    {mutant.mutation.code}\n    {mutant.mutation.change}"
              f"\n    (line {mutant.mutation.line}{reached})")
    return survivors


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sample", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--with", dest="tests", action="append", default=[])
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("places", nargs="*")
    options = parser.parse_args()
    every = all_mutants()
    chosen = sample(those_of(every, options.places), options.sample, options.seed)

    PLACE.mkdir(parents=True, exist_ok=True)
    fates = Fates(options.again)
    equals = Equals(ROOT)
    untried = []
    for mutant in chosen:
        if equals.has(mutant.file, mutant.mutation):
            fates.put(mutant, "equal")
        elif not fates.is_settled(mutant):
            untried.append(mutant)
    if untried:
        workshop = Workshop(ROOT, PLACE, every)
        workshop.build()
        runner = Runner(PLACE, workshop, options.jobs, options.quick)
        for number in (signal.SIGINT, signal.SIGTERM):
            signal.signal(number, lambda caught, _: (runner.end(), os._exit(128 + caught)))
        runner.measure({mutant.room() for mutant in untried}, options.tests)
        try_together([mutant for mutant in untried if mutant not in workshop.left_out], runner, fates)
        if not options.quick:
            try_alone([mutant for mutant in untried if mutant in workshop.left_out], workshop, runner, fates)
    print_table(chosen, fates)
    sys.exit(1 if print_survivors(chosen, fates) else 0)


if __name__ == "__main__":
    main()
