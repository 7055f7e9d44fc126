"""Splits C++ into tokens, as far as mutations need it."""

import dataclasses
import re

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
    |(?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
    |(?P<string>"(?:\\.|[^"\\\n])*")
    |(?P<character>'(?:\\.|[^'\\\n])+')
    |(?P<number>\b(?:0[xX][0-9a-fA-F]+|\d+)[uUlL]*\b)
    |(?P<word>[A-Za-z_]\w*)
    |(?P<operator>::|->|\+\+|--|<<|<=|>=|==|!=|&&|\|\||\+=|-=|[^\s\w])
    |(?P<space>\s+)""", re.VERBOSE | re.DOTALL | re.MULTILINE)


@dataclasses.dataclass
class Token:
    kind: str
    text: str
    begin: int
    # Where the bracket that this one opens is closed, as an index into the tokens; None for every other token.
    partner: int = None
    # What a brace encloses: "code", "scope" (of a namespace or type) or "list".
    encloses: str = None

    @property
    def end(self):
        return self.begin + len(self.text)


def tokenize(text):
    """The tokens that mean something to the compiler, brackets matched."""
    tokens = [Token(match.lastgroup, match.group(), match.start()) for match in TOKEN.finditer(text)
              if match.lastgroup not in ("comment", "directive", "space")]
    opened = []
    for index, token in enumerate(tokens):
        if token.kind != "operator":
            continue
        if token.text in "([{":
            opened.append(index)
            if token.text == "{":
                token.encloses = what_brace_encloses(tokens, index)
        elif token.text in ")]}":
            tokens[opened.pop()].partner = index
    return tokens


def what_brace_encloses(tokens, index):
    before = index - 1
    while before >= 0 and tokens[before].text in ("const", "noexcept", "override", "mutable"):
        before -= 1
    if before >= 0 and tokens[before].text in (")", "else", "do", "try"):
        return "code"
    if before >= 0 and tokens[before].text == "]":
        return "code"
    while before >= 0 and tokens[before].text not in (";", "{", "}", "=", "(", ",", "return"):
        if tokens[before].text in ("namespace", "class", "struct", "enum", "union"):
            return "scope"
        before -= 1
    return "list"
