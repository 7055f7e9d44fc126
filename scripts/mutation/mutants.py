"""Finds the mistakes that can be made in a C++ source."""

import dataclasses
import re

from cpptokens import tokenize

OPERATORS = {"==": "!=", "!=": "==", "<": "<=", ">": ">=", "<=": "<", ">=": ">", "&&": "||", "||": "&&", "++": "--",
             "--": "++"}
WORDS = {"true": "false", "false": "true", "none_of": "any_of", "any_of": "none_of", "break": "continue"}
# What a statement that is no step begins with.
NO_STEP = {"if", "for", "while", "do", "else", "switch", "case", "default", "return", "using", "const", "constexpr",
           "static", "struct", "auto", "template", "typename", "public", "private", "friend", "{", "}", ";"}


@dataclasses.dataclass
class Mutant:
    """One mistake: the characters from `begin` to `end` of a file become `replacement`."""
    file: str
    line: int
    kind: str
    begin: int
    end: int
    original: str
    replacement: str
    in_tests: bool = False

    def apply(self, text):
        return text[:self.begin] + self.replacement + text[self.end:]

    def __str__(self):
        def short(text):
            words = " ".join(text.split())
            return words if len(words) <= 60 else words[:57] + "..."
        return f"{self.file}:{self.line}: {self.kind}: {short(self.original)} -> {short(self.replacement) or 'nothing'}"


class Finder:
    def __init__(self, file, text):
        self.file = file
        self.text = text
        self.tokens = tokenize(text)
        self.contexts = self.find_contexts()
        self.mutants = []

    def find_contexts(self):
        """For each token what the innermost brace around it encloses."""
        contexts = []
        stack = [("scope", len(self.tokens))]
        for index, token in enumerate(self.tokens):
            if index >= stack[-1][1]:
                stack.pop()
            contexts.append(stack[-1][0])
            if token.encloses:
                stack.append((token.encloses, token.partner))
        return contexts

    def add(self, kind, begin, end, replacement):
        line = self.text.count("\n", 0, begin) + 1
        self.mutants.append(Mutant(self.file, line, kind, begin, end, self.text[begin:end], replacement))

    def replace_token(self, kind, token, replacement):
        self.add(kind, token.begin, token.end, replacement)

    def find(self):
        for index, token in enumerate(self.tokens):
            if token.kind == "string":
                self.replace_token("literal changed", token, token.text[:-1] + '~"')
            elif token.kind == "number":
                self.replace_token("constant changed", token, f"({token.text} + 1)")
            elif token.kind == "word":
                self.find_word(index, token)
            elif token.kind == "operator":
                self.find_operator(index, token)
        self.find_steps()
        self.mutants.sort(key=lambda mutant: (mutant.begin, mutant.end))
        return self.mutants

    def find_word(self, index, token):
        if token.text in WORDS:
            self.replace_token("constant changed" if token.text in ("true", "false") else "condition inverted", token,
                               WORDS[token.text])
        elif token.text in ("if", "while") and self.tokens[index + 1].text == "(":
            self.invert(index + 1)

    def invert(self, opening):
        """An if's condition comes after the declaration that it may begin with."""
        closing = self.tokens[opening].partner
        begin = opening + 1
        for index in self.at_level(opening):
            if self.tokens[index].text == ";":
                begin = index + 1
        first, last = self.tokens[begin].begin, self.tokens[closing - 1].end
        self.add("condition inverted", first, last, f"!({self.text[first:last]})")

    def at_level(self, opening):
        """The indices of the tokens directly within a pair of brackets."""
        index = opening + 1
        while index < self.tokens[opening].partner:
            yield index
            index = self.tokens[index].partner + 1 if self.tokens[index].partner else index + 1

    def find_operator(self, index, token):
        spaced = self.text[token.begin - 1] == " " and self.text[token.end:token.end + 1] in (" ", "\n")
        if token.text in OPERATORS and (spaced or token.text in ("++", "--")):
            self.replace_token("condition inverted" if token.text in ("==", "!=") else "operator changed", token,
                               OPERATORS[token.text])
        elif token.text in "({" and self.is_list(index, token):
            self.swap_items(index)

    def is_list(self, index, token):
        """Arguments of a call or items of an initializer; not parameters or the body of a function."""
        if token.text == "{":
            return token.encloses == "list"
        before = self.tokens[index - 1]
        return self.contexts[index] != "scope" and before.kind == "word" and before.text not in ("if", "for", "while")

    def swap_items(self, opening):
        commas = [index for index in self.at_level(opening) if self.tokens[index].text == ","]
        bounds = [opening, *commas, self.tokens[opening].partner]
        items = [(self.tokens[before + 1].begin, self.tokens[after - 1].end)
                 for before, after in zip(bounds, bounds[1:]) if after > before + 1]
        for first, second in zip(items, items[1:]):
            self.swap(first, second)

    def swap(self, first, second):
        texts = self.text[slice(*first)], self.text[slice(*second)]
        if texts[0] != texts[1] and not set(texts) & {"__FILE__", "__LINE__"} and not independent(*texts):
            self.add("order swapped", first[0], second[1],
                     texts[1] + self.text[first[1]:second[0]] + texts[0])

    def find_steps(self):
        """Statements that do something, and neighbours among them."""
        for opening, token in enumerate(self.tokens):
            if token.encloses != "code":
                continue
            steps = list(self.steps_within(opening))
            for first, last in steps:
                self.add("step left out", self.tokens[first].begin, self.tokens[last].end, "")
            for (first, middle), (second, last) in zip(steps, steps[1:]):
                if middle + 1 == second:
                    self.swap((self.tokens[first].begin, self.tokens[middle].end),
                              (self.tokens[second].begin, self.tokens[last].end))

    def steps_within(self, opening):
        begin = opening + 1
        for index in self.at_level(opening):
            token = self.tokens[index]
            if token.text == ";":
                if self.is_step(begin, index):
                    yield begin, index
                begin = index + 1
            elif token.encloses == "code" and self.tokens[begin].text in NO_STEP:
                begin = token.partner + 1

    def is_step(self, begin, end):
        if begin >= end or self.tokens[begin].text in NO_STEP:
            return False
        # Two names in a row, or a type's last character and a name: a declaration.
        for index in range(begin, end):
            token, after = self.tokens[index], self.tokens[index + 1]
            if token.text in ("(", "=", ".", "->", "[", "<<", "throw", "+="):
                return True
            if after.kind == "word" and (token.kind == "word" or token.text in (">", "&", "*")):
                return False
        return True


def independent(first, second):
    """Whether one of two statements sets a flag that the other does not know, so that their order means nothing."""
    for one, other in ((first, second), (second, first)):
        flag = re.fullmatch(r"([\w.]+) = (?:true|false);", one)
        if flag and not re.search(rf"\b{re.escape(flag[1])}\b", other):
            return True
    return False


def find_mutants(file, text):
    """All mistakes, in the order of the source."""
    return Finder(file, text).find()
