# A copy of the sources that is all mutants at once, and its build.

import json
import os
import re
import shutil
import subprocess
import sys
from collections import defaultdict

from rooms import targets
from schemata import LINES_IN_FRONT, schemata

# A place of which the compiler complains, or from which it came to what it complains of.
COMPLAINT = re.compile(r"^(?:In file included from |\s+from )?(\S+?):(\d+):(?:\d+:)?\s+(?:error|required from|note)")
UNUSABLE = re.compile(
    r"(?:the value of )?[‘'](?:\w+::)*(\w+)[’'] is not (?:usable in a constant expression|captured)")


class Workshop:
    """Of the mutants, those that the compiler does not take together with the others are left_out; they
    are built alone."""

    def __init__(self, root, place, mutants):
        self.root = root
        self.place = place
        self.sources = place / "source"
        self.folder = place / "build"
        self.of_file = defaultdict(list)
        for mutant in mutants:
            self.of_file[mutant.file].append(mutant)
        self.notes = place / "leftout.json"
        known = json.loads(self.notes.read_text()) if self.notes.exists() else {}
        self.left_out = {mutant for mutant in mutants if mutant.key() in known.get("mutants", [])}
        self.constants = set(known.get("constants", []))

    def build(self):
        """Leaves out, round by round, what the compiler does not take."""
        self.copy_sources()
        self.configure()
        print("Building", flush=True)
        while not self.compiles():
            if not self.leave_out():
                sys.exit(f"mutate: the sources do not build; {self.log()} tells more.")
            print(f"Building without {len(self.left_out)} mutants", flush=True)
            for file in self.of_file:
                self.write(file)

    def copy_sources(self):
        """Files that are the same stay as they are, and so does what was built of them."""
        listed = subprocess.run(
            ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            cwd=self.root, check=True, capture_output=True, text=True).stdout.split("\0")
        wanted = {name for name in listed if name and (self.root / name).is_file()}
        if self.sources.exists():
            for path in self.sources.rglob("*"):
                if path.is_file() and str(path.relative_to(self.sources)) not in wanted:
                    path.unlink()
        for name in wanted:
            if name in self.of_file:
                self.write(name)
                continue
            source, copy = self.root / name, self.sources / name
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)

    def write(self, file):
        numbers = [None if mutant in self.left_out else mutant.number for mutant in self.of_file[file]]
        text = (self.root / file).read_text(encoding="utf-8")
        self.put(file, schemata(text, numbers, self.constants))

    def put(self, file, text):
        copy = self.sources / file
        if not copy.exists() or copy.read_text(encoding="utf-8") != text:
            copy.parent.mkdir(parents=True, exist_ok=True)
            copy.write_text(text, encoding="utf-8")

    def put_alone(self, mutant):
        text = (self.root / mutant.file).read_text(encoding="utf-8")
        self.put(mutant.file, mutant.mutation.apply(text))

    def configure(self):
        linkers = [name for name in ("lld", "gold") if shutil.which(f"ld.{name}")]
        options = [f"-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld={linkers[0]}"] if linkers else []
        # As fast to compile as can be without slow tests, of which some look at every pixel.
        command = ["cmake", "-S", self.sources, "-B", self.folder, "-G", "Ninja",
                   "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -w -Wno-narrowing", *options]
        with open(self.log(), "w", encoding="utf-8") as log:
            if subprocess.run(command, stdout=log, stderr=log, check=False).returncode:
                sys.exit(f"mutate: CMake fails; {log.name} tells more.")

    def log(self):
        return self.place / "build.log"

    def compiles(self, executables=None):
        """Builds the executables; those of all rooms, where none is named."""
        with open(self.log(), "w", encoding="utf-8") as log:
            return subprocess.run(
                ["ninja", "-C", self.folder, "-k", "0", "-j", str(os.cpu_count()),
                 *sorted(executables or targets())],
                stdout=log, stderr=log, check=False,
                env={**os.environ, "LC_ALL": "C.UTF-8"}).returncode == 0

    def leave_out(self):
        """Returns whether there was something to leave out."""
        log = self.log().read_text(encoding="utf-8")
        before = len(self.left_out) + len(self.constants)
        self.constants.update(UNUSABLE.findall(log))
        places = {(match[1], int(match[2]) - LINES_IN_FRONT) for match in map(COMPLAINT.match, log.splitlines()) if match}
        for path, line in places:
            file = path.removeprefix(f"{self.sources}/")
            self.left_out.update(mutant for mutant in self.of_file.get(file, [])
                                 if is_at(mutant.mutation, line))
        self.notes.write_text(json.dumps({
            "mutants": [mutant.key() for mutant in self.left_out], "constants": sorted(self.constants)}))
        return len(self.left_out) + len(self.constants) > before


def is_at(mutation, line):
    """Whether what is written for the mutation begins or ends in the line."""
    return line == mutation.line or mutation.kind != "statement" and line == mutation.last_line
