# Writes a source that is all its mutants at once: at each place that can be changed it asks which it is.
"""Usage: schemata.py FILE
Prints the source so, its mutants numbered from 1 on."""

import re
import sys
from collections import defaultdict
from pathlib import Path

from mutations import CLOSING, Source, mutations

HEADER = Path(__file__).parent / "mutated.h"
LINES_IN_FRONT = 1  # that the source has not

FUNCTIONS = {
    "==": "std::equal_to<>",
    "!=": "std::not_equal_to<>",
    "<": "std::less<>",
    "<=": "std::less_equal<>",
    ">": "std::greater<>",
    ">=": "std::greater_equal<>",
    "+": "std::plus<>",
    "-": "std::minus<>",
    "*": "std::multiplies<>",
    "/": "std::divides<>",
    "+=": "mutants::PlusAssign",
    "-=": "mutants::MinusAssign",
}
# An operator of mutated.h that binds as tightly.
INFIXES = {"==": "==", "!=": "==", "<": "<", "<=": "<", ">": "<", ">=": "<", "+": "+", "-": "+",
           "*": "*", "/": "*", "+=": "+=", "-=": "+="}
LOGIC = {"&&", "||"}
# What stands in front of a whole expression or behind it.
LOGIC_ENDS = {",", ";", "?", ":", "=", "+=", "-=", "*=", "/=", "&=", "|=", "^=", "return", "emit", "throw"}


def schemata(text, numbers, constants=()):
    """The text with the mutations that have a number, by that number; numbers holds one for each of
    mutations(text), or None. A constant that is named in constants stays one for the compiler."""
    return Schemata(text, numbers, constants).text()


class Schemata:
    def __init__(self, text, numbers, constants):
        self.source = Source(text)
        self.places = {token.begin: i for i, token in enumerate(self.source.tokens)}
        self.replaced = {}  # token begin -> (its end, text)
        self.openings = defaultdict(str)
        self.closings = defaultdict(str)
        self.groups = {}  # begin -> (end, {operator's begin: (number, other)})
        operators = defaultdict(list)
        for mutation, number in zip(mutations(text), numbers):
            if number is None:
                continue
            if mutation.kind == "operator":
                operators[mutation.begin].append((number, mutation.replacement))
            else:
                getattr(self, f"put_{mutation.kind}")(mutation, number)
            self.open_constant(mutation.begin, constants)
        for begin, others in operators.items():
            self.put_operator(begin, others)

    def text(self):
        return f'#include "{HEADER}"\n{self.rendered(0, len(self.source.text))}'

    def old(self, mutation):
        return self.source.text[mutation.begin : mutation.end]

    def put_value(self, mutation, number):
        self.replaced[mutation.begin] = (
            mutation.end, f"(mutants::is({number}) ? {mutation.replacement} : {self.old(mutation)})")

    def put_name(self, mutation, number):
        name = "Min" if self.old(mutation).lower().endswith("min") else "Max"
        self.replaced[mutation.begin] = (mutation.end, f"mutants::{name}<{number}>::call")

    def put_sign(self, mutation, number):
        self.replaced[mutation.begin] = (mutation.end, f"mutants::Minus<{number}>() ->* ")

    def put_not(self, mutation, number):
        self.replaced[mutation.begin] = (mutation.end, f"mutants::Not<{number}>() ->* ")

    def put_statement(self, mutation, number):
        self.openings[mutation.begin] = f"if (mutants::is({number})) ; else "

    def put_condition(self, mutation, number):
        declared = re.search(r"; !(\w+)$", mutation.replacement)
        if declared and mutation.replacement.startswith(self.old(mutation)):
            self.closings[mutation.end] = f"; mutants::is({number}) != static_cast<bool>({declared[1]})"
        else:
            self.openings[mutation.begin] = f"mutants::is({number}) != static_cast<bool>("
            self.closings[mutation.end] = ")"

    def put_operator(self, begin, others):
        i = self.places[begin]
        sign = self.source.says(i)
        if sign in LOGIC:
            self.put_logic(i, *others[0])
            return
        parts = ", ".join(f"{number}, {FUNCTIONS[other]}" for number, other in others)
        operator = f"mutants::Operator<{FUNCTIONS[sign]}, {parts}>()"
        self.replaced[begin] = (
            self.source.tokens[i].end, f"{INFIXES[sign]} {operator} {INFIXES[sign]}")

    def put_logic(self, i, number, other):
        """An expression with such operators is written once for each of them, and once as it is."""
        tokens = self.source.tokens
        first = i
        while not self.ends_logic(first - 1, CLOSING):
            first = self.source.partners.get(first - 1, first - 1)
        last = i
        while not self.ends_logic(last + 1, CLOSING.values()):
            last = self.source.partners.get(last + 1, last + 1)
        _, changes = self.groups.setdefault(tokens[first].begin, (tokens[last].end, {}))
        changes[tokens[i].begin] = (number, other)

    def ends_logic(self, i, brackets):
        return self.source.says(i) in LOGIC_ENDS or (
            self.source.tokens[i].kind == "sign" and self.source.says(i) in brackets)

    def open_constant(self, begin, constants):
        """What is changed as the program starts is no constant of the compiler's any more."""
        i = next(i for i, token in enumerate(self.source.tokens) if token.begin >= begin)
        while i >= 0 and self.source.says(i) not in (";", "}"):
            if self.source.says(i) == "{" and self.source.is_block(i):
                i -= 1
                continue
            if self.source.says(i) == "constexpr" and self.source.says(i - 1) != "if":
                self.put_constant(i, constants)
                return
            i -= 1

    def put_constant(self, i, constants):
        name = i + 1
        while self.source.says(name) not in ("=", "{", "(", ";", "["):
            name += 1
        if self.source.says(name - 1) in constants:
            return
        token = self.source.tokens[i]
        if self.source.says(name) == "(":
            word = "inline"
        elif self.source.says(i - 1) == "inline" or self.in_function(i):
            word = "const"
        else:
            word = "inline const"
        self.replaced[token.begin] = (token.end, word)

    def in_function(self, i):
        i -= 1
        while i >= 0:
            if self.source.says(i) == "{":
                return self.source.is_block(i)
            i = self.source.partners[i] - 1 if self.source.says(i) in ("}", ")", "]") else i - 1
        return False

    def rendered(self, begin, end, group=None, changed=None):
        """What stands from begin to end in the source; of the group that begins there, without asking,
        with one operator changed."""
        text = self.source.text
        parts = []
        at = begin
        inside = group is not None  # what opens before the group stands outside of it
        places = {*self.openings, *self.closings, *self.groups, *self.replaced, *(changed or ())[:1]}
        marks = sorted(place for place in places if begin <= place < end)
        for place in marks:
            if place < at:
                continue
            parts.append(text[at:place])
            at = place
            if not (inside and place == begin):
                parts.append(self.closings.get(place, ""))
                parts.append(self.openings.get(place, ""))
            if place in self.groups and place != group:
                parts.append(self.asked(place))
                at = self.groups[place][0]
            elif changed and place == changed[0]:
                parts.append(changed[1])
                at += 2
            elif place in self.replaced:
                at, replacement = self.replaced[place]
                parts.append(replacement)
        parts.append(text[at:end])
        return "".join(parts)

    def asked(self, begin):
        end, changes = self.groups[begin]
        parts = []
        for place, (number, other) in sorted(changes.items()):
            changed = self.rendered(begin, end, begin, (place, other))
            if "//" not in changed:
                changed = " ".join(changed.split("\n"))  # so that the lines below keep their numbers
            parts.append(f"mutants::is({number}) ? ({changed}) : ")
        return f"({''.join(parts)}({self.rendered(begin, end, begin)}))"


def main(path):
    text = Path(path).read_text(encoding="utf-8")
    print(schemata(text, range(1, len(mutations(text)) + 1)), end="")


if __name__ == "__main__":
    main(sys.argv[1])
