# Reads equal.txt, which names the mutants that no test can tell from the program.
"""Usage: equals.py ROOT
Names what equal.txt has of lines that are not there any more."""

import re
import sys
from pathlib import Path

from mutations import mutations

CHANGE = re.compile(r" -> |^dropped( #\d+)?$")


class Equals:
    def __init__(self, root):
        self.root = Path(root)
        text = (Path(__file__).parent / "equal.txt").read_text(encoding="utf-8")
        lines = [line for line in text.splitlines() if not line.startswith("#")]
        self.reasons = {}
        for paragraph in "\n".join(lines).strip().split("\n\n"):
            file, code, *rest = [line.strip() for line in paragraph.strip().splitlines()]
            reason = " ".join(line for line in rest if not CHANGE.search(line))
            for change in filter(CHANGE.search, rest):
                self.reasons[file, code, change] = reason

    def has(self, file, mutation):
        return (file, mutation.code, mutation.change) in self.reasons

    def mistakes(self):
        """What is named without a reason, and what is not there."""
        for entry, reason in self.reasons.items():
            if not reason:
                yield f"{' '.join(entry)}: has no reason"
            elif not self.exists(*entry):
                yield f"{entry[0]}: there is no mutant \"{entry[2]}\" of \"{entry[1]}\""

    def exists(self, file, code, change):
        path = self.root / file
        return path.exists() and any(
            mutation.code == code and mutation.change == change
            for mutation in mutations(path.read_text(encoding="utf-8")))


def main(root):
    found = list(Equals(root).mistakes())
    for mistake in found:
        print(f"tests/mutants/equal.txt: {mistake}", file=sys.stderr)
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main(sys.argv[1])
