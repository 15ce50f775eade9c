"""The small changes to a C++ source that its tests have to notice.

mutations(text) gives them all. It sees tokens, brackets and the lines that the formatter makes, no more: what doesn't
compile, or compiles to the same program, is for the caller to sort out.
"""

import dataclasses
import random
import re

TOKEN = re.compile(r"""
    (?P<blank>   \s+ | //[^\n]* | ^[ \t]*\#(?:\\\n|[^\n])* )
  | (?P<text>    R"\(.*?\)" | "(?:\\.|[^"\\])*" )
  | (?P<number>  0x[0-9a-fA-F]+ | \d[\d']*(?:\.\d*)?(?:[eE][+-]?\d+)? )
  | (?P<char>    '(?:\\.|[^'\\])' )
  | (?P<word>    [A-Za-z_]\w* )
  | (?P<sign>    ::|->|\+\+|--|<<|>>|[-+=!<>*/%&|^]=|&&|\|\||\.\.\.|. )
""", re.VERBOSE | re.MULTILINE | re.DOTALL)

WORDS = {"true": "false", "false": "true"}
# With a blank on both sides, as the formatter sets them: without, < and > enclose template arguments.
OPERATORS = {
    "==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"],
    "&": ["|"], "|": ["&"], "^": ["|"], ">>": ["<<"], "+=": ["-="], "|=": ["="],
}
OPENING, CLOSING = "([{", ")]}"
INDENTATION = 4
CONTROL = re.compile(r"\s*(if|else|for|while|switch)\b")


@dataclasses.dataclass(frozen=True)
class Mutation:
    """The text from start up to end becomes another one."""
    kind: str
    start: int
    end: int
    replacement: str

    def apply(self, text):
        return text[:self.start] + self.replacement + text[self.end:]

    def lines(self, text):
        """The lines that change, before and after, without their indentation."""
        first = text.rfind("\n", 0, self.start) + 1
        last = text.find("\n", self.end)
        tail = text[self.end:last]
        return [" ".join(changed.split())
                for changed in (text[first:last], text[first:self.start] + self.replacement + tail)]


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


def mutations(text):
    """All mutations of a source, always in the same order."""
    tokens = [Token(match.lastgroup, match.group(), match.start(), match.end())
              for match in TOKEN.finditer(text) if match.lastgroup != "blank"]
    return [*of_constants(tokens), *of_operators(text, tokens), *of_conditions(text, tokens), *of_lists(text, tokens),
            *of_streams(text, tokens), *of_statements(text, tokens)]


def of_constants(tokens):
    """Another number, character, text or truth."""
    change = {"number": other_numbers, "char": other_character, "text": other_texts,
              "word": lambda word: [WORDS[word]] if word in WORDS else []}
    for token in tokens:
        for replacement in change.get(token.kind, lambda _: [])(token.text):
            yield Mutation("constant", token.start, token.end, replacement)


def other_numbers(literal):
    digits = literal.replace("'", "")
    if re.fullmatch(r"\d+", digits):
        return [str(int(digits) + difference) for difference in (1, -1) if int(digits) + difference >= 0]
    if digits.startswith("0x"):
        return [hex(int(digits, 16) + 1)]
    return [repr(2 * float(digits) or 1.0)]


def other_character(literal):
    return ["'_'" if literal == "' '" else "' '"]


def other_texts(literal):
    """One character is another one: in an ordinary literal, and in each line of a raw one."""
    if literal == '""':
        return ['"x"']
    is_raw = literal.startswith("R")
    first, last = (3, len(literal) - 2) if is_raw else (1, len(literal) - 1)
    results = []
    for line in re.finditer(r"[^\n]+", literal[first:last]):
        places = [place.start() + first + line.start()
                  for place in re.finditer(r"(?<!\\)[\w.,* -]", line.group())]
        if places:
            place = random.Random(literal).choice(places)
            other = "y" if literal[place] == "x" else "x"
            results.append(literal[:place] + other + literal[place + 1:])
    return results


def of_operators(text, tokens):
    """Another comparison, connection or calculation; and no "not"."""
    for token in tokens:
        if text[token.start - 1] == " " and text[token.end] in " \n":
            for replacement in OPERATORS.get(token.text, []):
                yield Mutation("operator", token.start, token.end, replacement)
        elif token.text == "!":
            yield Mutation("operator", token.start, token.end, "")


def of_conditions(text, tokens):
    """The opposite, or always."""
    closing = brackets(tokens)
    for index, token in enumerate(tokens):
        if token.text in ("if", "while") and tokens[index + 1].text == "(":
            start, end = tokens[index + 1].start, tokens[closing[index + 1]].end
            condition = text[start:end]
            if not condition.startswith("(!") or "&&" in condition or "||" in condition: # else the operator goes
                yield Mutation("condition", start, end, f"(!{condition})")
            if token.text == "if":
                yield Mutation("condition", start, end, "(true)")


def brackets(tokens):
    """The index of the closing bracket for that of each opening one."""
    closing, opened = {}, []
    for index, token in enumerate(tokens):
        if token.text in OPENING:
            opened.append(index)
        elif token.text in CLOSING:
            closing[opened.pop()] = index
    return closing


def items(tokens, first, end, separator):
    """The runs of tokens between separators, from first up to end, as pairs of indices."""
    depth, start, runs = 0, first, []
    for index in range(first, end):
        depth += (tokens[index].text in OPENING) - (tokens[index].text in CLOSING)
        if depth == 0 and tokens[index].text == separator:
            runs.append((start, index))
            start = index + 1
    return [(start, end) for start, end in [*runs, (start, end)] if start < end]


def swap(text, tokens, left, right):
    left_start, left_end = tokens[left[0]].start, tokens[left[1] - 1].end
    right_start, right_end = tokens[right[0]].start, tokens[right[1] - 1].end
    swapped = text[right_start:right_end] + text[left_end:right_start] + text[left_start:left_end]
    return Mutation("swap", left_start, right_end, swapped)


def of_lists(text, tokens):
    """Arguments or rows that look alike trade places; a row is missing."""
    for opening, closing in brackets(tokens).items():
        runs = items(tokens, opening + 1, closing, ",")
        shapes = [[token.kind for token in tokens[start:end]] for start, end in runs]
        for left, right, left_shape, right_shape in zip(runs, runs[1:], shapes, shapes[1:]):
            if left_shape == right_shape:
                yield swap(text, tokens, left, right)
                if tokens[opening].text == "{":
                    yield Mutation("drop", tokens[left[0]].start, tokens[right[0]].start, "")


def of_streams(text, tokens):
    """Items that are written trade places, or are missing."""
    ends = [-1, *(index for index, token in enumerate(tokens) if token.text in (";", "{", "}"))]
    for before, end in zip(ends, ends[1:]):
        written = items(tokens, before + 1, end, "<<")[1:]
        for left, right in zip(written, written[1:]):
            yield swap(text, tokens, left, right)
        for start, last in written:
            yield Mutation("drop", tokens[start - 1].start, tokens[last - 1].end, "")


def of_statements(text, tokens):
    """A statement is missing, or comes after the next one."""
    runs = statements(text, tokens)
    for start, end, _ in runs:
        yield Mutation("drop", start, end, ";")
    for (start, end, indentation), (next_start, next_end, next_indentation) in zip(runs, runs[1:]):
        if indentation == next_indentation and not text[end:next_start].strip():
            swapped = text[next_start:next_end] + text[end:next_start] + text[start:end]
            yield Mutation("swap", start, next_end, swapped)


def statements(text, tokens):
    """The start, end and indentation of the simple statements, by the lines that the formatter makes of them."""
    lines = {} # the tokens by the start of their line
    for token in tokens:
        lines.setdefault(text.rfind("\n", 0, token.start) + 1, []).append(token)
    runs, first = [], None
    for line, content in lines.items():
        if first is None:
            first, first_line = content[0], line
        last = content[-1].text
        if last == ";":
            indentation = first.start - first_line
            ends_function = first.text == "return" and indentation == INDENTATION
            if indentation > 0 and first.text != "}" and not ends_function:
                runs.append((first.start, content[-1].end, indentation))
        if last in (";", "{", "}", ":") or CONTROL.match(text, line):
            first = None
    return runs
