# Finds the places in a C++ source that can be changed, each into a program that does something else.
"""Usage: mutations.py FILE...
Lists the mutations of the files, in the form of equal.txt without the reasons."""

import re
import sys
from collections import Counter
from dataclasses import dataclass

TOKEN = re.compile(
    r"""
      (?P<comment>//[^\n]*|/\*.*?\*/)
    | (?P<directive>(?<![^\n])[ \t]*\#(?:\\\n|[^\n])*)
    | (?P<text>(?:u8|[uUL])?(?:R"(?P<delimiter>[^()\s]*)\(.*?\)(?P=delimiter)"
        |"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])*')\w*)
    | (?P<number>\.?\d(?:[eEpP][+-]|'(?=\w)|[\w.])*)
    | (?P<word>[A-Za-z_]\w*)
    | (?P<sign><<=|>>=|<=>|->\*|\.\.\.|::|->|\+\+|--|&&|\|\||[=!<>+\-*/%&|^]=|<<|.)
    """,
    re.VERBOSE | re.DOTALL,
)

# What stands between two values, by what it becomes.
OPERATORS = {
    "==": ["!="],
    "!=": ["=="],
    "<": ["<=", ">="],
    "<=": ["<", ">"],
    ">": [">=", "<="],
    ">=": [">", "<"],
    "&&": ["||"],
    "||": ["&&"],
    "+": ["-"],
    "-": ["+"],
    "*": ["/"],
    "/": ["*"],
    "+=": ["-="],
    "-=": ["+="],
}
COMPARISONS = {"==", "!=", "<", "<=", ">", ">="}
WORDS = {
    "true": "false",
    "false": "true",
    "min": "max",
    "max": "min",
    "qMin": "qMax",
    "qMax": "qMin",
}
# What they enclose is checked or said and not done.
CHECKS = {"static_assert", "Q_ASSERT", "Q_ASSERT_X", "Q_STATIC_ASSERT", "alignas", "decltype"}
LOGGING = {"qDebug", "qInfo", "qWarning", "qCritical", "qCDebug", "qCInfo", "qCWarning", "qCCritical"}
CLOSING = {"(": ")", "[": "]", "{": "}"}
TYPES = {"class", "struct", "union", "enum", "namespace"}
JUMPS = {"return", "break", "continue"}
# A statement that begins with one of these cannot be dropped, or only with what it holds.
UNDROPPED = TYPES | CHECKS | LOGGING | {
    "auto", "case", "const", "constexpr", "default", "do", "else", "explicit", "extern", "for",
    "friend", "goto", "if", "inline", "private", "protected", "public", "signals", "slots", "static",
    "switch", "template", "try", "typedef", "typename", "using", "virtual", "volatile", "while"}
# Of the conditions of a preprocessor, those that are known here.
HOLDS = {"Q_OS_WIN": False, "Q_OS_MACOS": False, "Q_OS_UNIX": True, "Q_OS_LINUX": True}


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    begin: int
    end: int


@dataclass(frozen=True)
class Mutation:
    """In place of what stands from begin to end in the source comes replacement."""

    kind: str  # "value", "name", "operator", "sign", "not", "condition" or "statement"
    begin: int
    end: int
    replacement: str
    change: str  # in the words of equal.txt
    line: int  # where it begins, from 1 on
    last_line: int
    code: str  # the line's text, without what indents it

    def apply(self, source):
        return source[: self.begin] + self.replacement + source[self.end :]


def tokens_of(source):
    """The tokens that are compiled, without comments."""
    found = []
    conditions = []
    for match in TOKEN.finditer(source):
        token = Token(match.lastgroup, match.group(), match.start(), match.end())
        if token.kind == "directive":
            follow_directive(token.text, conditions)
        elif token.kind != "comment" and not token.text.isspace() and all(conditions):
            found.append(token)
    return found


def follow_directive(text, conditions):
    """Keeps which of a preprocessor's conditions hold; None is one that is not known."""
    name, condition = re.match(r"\s*#\s*(\w*)\s*(\w*)", text).groups()
    holds = HOLDS.get(condition)
    if name == "ifdef":
        conditions.append(holds)
    elif name == "ifndef":
        conditions.append(None if holds is None else not holds)
    elif name == "if":
        conditions.append(None)
    elif name in ("else", "elif"):
        conditions[-1] = None if name == "elif" or conditions[-1] is None else not conditions[-1]
    elif name == "endif":
        conditions.pop()


class Source:
    """A source with its tokens, and where its brackets and blocks are."""

    def __init__(self, text):
        self.text = text
        self.tokens = tokens_of(text)
        self.partners = {}
        opened = []
        for i, token in enumerate(self.tokens):
            if token.kind != "sign":
                continue
            if token.text in CLOSING:
                opened.append(i)
            elif token.text in CLOSING.values():
                begin = opened.pop()
                self.partners[begin] = i
                self.partners[i] = begin

    def says(self, i):
        """The token's text; of a text that the program shows, and beyond the ends, nothing."""
        if not 0 <= i < len(self.tokens) or self.tokens[i].kind == "text":
            return ""
        return self.tokens[i].text

    def is_word(self, i):
        return 0 <= i < len(self.tokens) and self.tokens[i].kind == "word"

    def stands_free(self, i):
        """Whether there is room on both sides of the token, as the layout has it between values."""
        token = self.tokens[i]
        return self.text[token.begin - 1].isspace() and self.text[token.end].isspace()

    def statement_end(self, begin):
        """The semicolon that ends what begins there; None where something else comes first."""
        i = begin
        while i < len(self.tokens):
            sign = self.says(i)
            if sign == ";":
                return i
            if sign in CLOSING.values():
                return None
            i = self.partners[i] + 1 if sign in CLOSING else i + 1
        return None

    def is_block(self, brace):
        """Whether the brace opens a block of statements, and not a class or a list of values."""
        before = self.says(brace - 1)
        if before in ("else", "do", "try", ";", "{", "}", "const", "override", "noexcept", "mutable"):
            return not self.begins_type(brace)
        # A function or a lambda, also one with a type after its arrow; a condition; or a class whose
        # members are made in front of it.
        return before in (")", "]") or "->" in (self.says(i) for i in range(brace - 6, brace))

    def begins_type(self, brace):
        i = brace - 1
        while i >= 0 and self.says(i) not in (";", "{", "}", ")"):
            if self.says(i) in TYPES:
                return True
            i -= 1
        return False

    def untouched(self):
        """The tokens that are not to be changed: what is checked, logged or merely declared."""
        found = set()
        for i in range(len(self.tokens)):
            word = self.says(i)
            if word in CHECKS or word.startswith("Q_"):
                if self.says(i + 1) == "(":
                    found.update(range(i, self.partners[i + 1] + 1))
            elif word in LOGGING:
                found.update(range(i, (self.statement_end(i) or i) + 1))
            elif word == "template" and self.says(i + 1) == "<":
                found.update((i, i + 1))
        return found


def replacements(source):
    """Yields (kind, first, last, in their place) for each token that means something else in another
    form."""
    for i, token in enumerate(source.tokens):
        if token.kind == "number":
            yield "value", i, i, plus_one(token.text)
        elif token.text in ("true", "false") and token.kind == "word":
            yield "value", i, i, WORDS[token.text]
        elif token.text in WORDS and token.kind == "word" and source.says(i + 1) in ("(", "<"):
            yield "name", i, i, WORDS[token.text]
        elif token.text in OPERATORS and token.kind == "sign" and source.stands_free(i):
            for other in OPERATORS[token.text]:
                yield "operator", i, i, other
        elif token.text == "-" and token.kind == "sign" and is_sign(source, i):
            yield "sign", i, i, ""


def is_sign(source, i):
    """Whether the minus is that of a negative value."""
    before = source.says(i - 1)
    return source.text[source.tokens[i].end].isspace() is False and (
        before in ("(", "{", "[", ",", "?", ":", "=", "return", "<", ">", "<=", ">=", "==", "!=",
                   "*", "/", "+", "-"))


def plus_one(number):
    """The number and one; in the same form, as far as it has one."""
    match = re.fullmatch(r"(0[xX]|0(?=\d))?([\da-fA-F']+?)([uUlLzZ]*)", number)
    if match and (match[1] in ("0x", "0X") or match[2].replace("'", "").isdigit()):
        base, form = {"0": (8, "o"), None: (10, "d")}.get(match[1], (16, "x"))
        value = int(match[2].replace("'", ""), base) + 1
        return f"{match[1] or ''}{value:{form}}{match[3]}"
    match = re.fullmatch(r"([\d.']+)([fFlL]?)", number)
    if match:
        whole, _, rest = match[1].replace("'", "").partition(".")
        return f"{int(whole or 0) + 1}.{rest}{match[2]}"
    return f"({number} + 1)"


def negated_conditions(source):
    """Yields (kind, first, last, in their place) for the conditions of branches and loops."""
    for i in range(len(source.tokens)):
        word = source.says(i)
        if word in ("if", "while") and source.says(i + 1) == "(":
            yield from negated(source, i + 2, source.partners[i + 1] - 1)
        elif word == "for" and source.says(i + 1) == "(":
            end = source.statement_end(i + 2)
            last = end and source.statement_end(end + 1)
            if last and last > end + 1:
                yield from negated(source, end + 1, last - 1)
        elif word == "!" and not is_whole_condition(source, i):
            yield "not", i, i, ""


def negated(source, first, last):
    begins = source.statement_end(first)
    if begins and begins < last:
        first = begins + 1
    operators = outer_operators(source, first, last)
    if len(operators) == 1 and operators[0] in COMPARISONS:
        return  # turned, it is the same
    inside = source.text[source.tokens[first].begin : source.tokens[last].end]
    declared = re.match(r"(?:const )?auto .*?(\w+) = ", inside)
    if declared and source.says(first - 2) == "while":
        return  # there nothing can stand behind the declaration
    if declared:
        yield "condition", first, last, f"{inside}; !{declared[1]}"
    elif source.says(first) == "!" and is_whole_condition(source, first):
        yield "condition", first, last, inside[1:]
    else:
        yield "condition", first, last, f"!({inside})"


def is_whole_condition(source, i):
    """Whether all of a condition is negated by the sign there; then that is one mutation, not two."""
    if source.says(i - 1) != "(" or source.says(i - 2) not in ("if", "while"):
        return False
    return not outer_operators(source, i, source.partners[i - 1] - 1)


def outer_operators(source, first, last):
    """The operators between values that stand in no further brackets."""
    found = []
    i = first
    while i <= last:
        if source.says(i) in OPERATORS and source.stands_free(i) or source.says(i) == "=":
            found.append(source.says(i))
        i = source.partners[i] + 1 if source.says(i) in CLOSING else i + 1
    return found


def droppable_statements(source):
    """Yields (first, last) for the statements without which the others still mean something."""
    for i in range(1, len(source.tokens)):
        if not is_statement_begin(source, i):
            continue
        end = source.statement_end(i)
        if end and is_droppable(source, i, end):
            yield i, end


def is_statement_begin(source, i):
    before = source.says(i - 1)
    if before == "{":
        return source.is_block(i - 1)
    if before == "}" and (source.says(i) == "(" or not source.is_block(source.partners[i - 1])):
        return False  # the call of a lambda, or behind a list of values
    if before in ("}", ";"):
        return in_block(source, i)
    if before == ")":
        # The body of a condition or a loop.
        return source.says(source.partners[i - 1] - 1) in ("if", "for", "while")
    if before == ":":
        return source.says(i - 2) == "default" or any(
            source.says(j) == "case" for j in range(max(0, i - 6), i))
    return before in ("else", "do")


def in_block(source, i):
    """Whether what is around the token is a block of statements."""
    i -= 1
    while i >= 0:
        if source.says(i) in CLOSING:
            return source.says(i) == "{" and source.is_block(i)
        i = source.partners[i] - 1 if source.says(i) in CLOSING.values() else i - 1
    return False


def is_droppable(source, first, end):
    word = source.says(first)
    if word in JUMPS:
        return end == first + 1
    if word in UNDROPPED or word in "{}[]);":
        return False
    i = first
    acts = False
    while i < end:
        # Two words side by side, or a word after the brackets of a template, declare something.
        named = source.is_word(i) and source.says(i) not in ("delete", "emit", "throw", "co_await")
        if named and not acts:
            following = i + 1
            if source.says(following) in ("&", "*", ">") and not source.stands_free(following):
                following += 1
            if source.is_word(following):
                return False
        acts = acts or source.says(i) in ("(", "++", "--", "delete") or source.says(i)[-1:] == "="
        i = source.partners[i] + 1 if source.says(i) in CLOSING else i + 1
    return acts


def mutations(text):
    """All mutations of the source text, in its order."""
    source = Source(text)
    untouched = source.untouched()
    found = []
    for kind, first, last, replacement in [*replacements(source), *negated_conditions(source)]:
        if first in untouched:
            continue
        begin, end = source.tokens[first].begin, source.tokens[last].end
        old = " ".join(text[begin:end].split())
        change = f"{old} -> {' '.join(replacement.split()) or 'nothing'}"
        found.append((begin, end, replacement, change, kind))
    for first, last in droppable_statements(source):
        if first not in untouched:
            begin, end = source.tokens[first].begin, source.tokens[last].end
            found.append((begin, end, ";", "dropped", "statement"))
    return numbered(text, sorted(found))


def numbered(text, found):
    """Tells mutations of a file apart that are said in the same words."""
    seen = Counter()
    result = []
    for begin, end, replacement, change, kind in found:
        line_begin = text.rfind("\n", 0, begin) + 1
        code = text[line_begin:].partition("\n")[0].strip()
        line = text.count("\n", 0, begin) + 1
        seen[code, change] += 1
        if seen[code, change] > 1:
            change = f"{change} #{seen[code, change]}"
        last_line = line + text.count("\n", begin, end)
        result.append(Mutation(kind, begin, end, replacement, change, line, last_line, code))
    return result


def main(paths):
    for path in paths:
        with open(path, encoding="utf-8") as file:
            for mutation in mutations(file.read()):
                print(f"{path}:{mutation.line} | {mutation.code} | {mutation.change}")


if __name__ == "__main__":
    main(sys.argv[1:])
