"""Where a C++ source can be made wrong, and how.

The source is read as tokens, not parsed: what does not compile when planted is found out by the
compiler. Every fault knows two forms: the plain one (the text that a person would have written),
and, as insertions, one that can be switched on at run time (see planted_faults.h).
"""

import dataclasses
import hashlib
import re

TOKEN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.)*)
      |(?P<text>(?:u8|[uUL])?R"(?P<fence>[^(\s]*)\(.*?\)(?P=fence)"|(?:u8|[uUL])?"(?:[^"\\\n]|\\.)*"
               |'(?:[^'\\\n]|\\.)+')
      |(?P<number>\.?\d(?:[eEpP][+-]|'?[\w.])*)
      |(?P<word>\w+)
      |(?P<mark><<=|>>=|<=>|->\*?|::|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|.)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)
BINARY = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "&": "|", "|": "&", "<": "<=",
          "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
ASSIGNMENT = {"+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "|=": "&=", "&=": "|="}
NOT_A_STATEMENT = set(
    "using const constexpr static auto if for while do switch case default else class struct enum "
    "template typedef goto namespace public private protected extern friend inline virtual explicit "
    "static_assert operator try catch".split())


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    begin: int
    end: int


@dataclasses.dataclass(frozen=True)
class Fault:
    path: str
    line: int
    kind: str
    before: str  # the changed lines, as they are
    after: str  # and with the fault
    begin: int  # the plain form: source[begin:end] becomes `plain`
    end: int
    plain: str
    switched: tuple  # the other form: (position, characters to drop, text), {} is the number

    @property
    def key(self):
        """What names this fault as long as its lines stay as they are, wherever they stand."""
        return self.path, self.before, self.after

    def rank(self, seed):
        """The order in which faults are planted: a draw that edits elsewhere do not change."""
        return hashlib.sha256(repr((seed, *self.key)).encode()).digest()


def tokens_of(source):
    return [Token(m.lastgroup if m.lastgroup != "fence" else "text", m.group(), m.start(), m.end())
            for m in TOKEN.finditer(source) if m.group("skip") is None]


class Scan:
    """One pass over the tokens of a source; `faults` holds what it found."""

    def __init__(self, path, source):
        self.path, self.source, self.faults, self.seen = path, source, [], {}
        self.tokens = tokens_of(source)
        self.partner = {}
        opened = []
        for i, token in enumerate(self.tokens):
            if token.kind == "mark" and token.text in "([{":
                opened.append(i)
            elif token.kind == "mark" and token.text in ")]}" and opened:
                self.partner[i] = opened.pop()
                self.partner[self.partner[i]] = i
        in_round = {k for i, end in self.partner.items() if self.text(i) == "(" and "for" ==
                    self.text(i - 1) for k in range(i, end)}
        for i, token in enumerate(self.tokens):
            if self.is_checked_by_the_compiler(i):
                continue
            if token.kind == "number":
                self.number(i)
            elif token.kind == "word":
                self.word(i)
            elif token.kind == "mark":
                self.mark(i)
            if i == 0 or self.text(i - 1) in ("{", "}", ";") and i not in in_round:
                self.statement(i)

    def text(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def is_operand_end(self, i):
        return i >= 0 and (self.tokens[i].kind in ("word", "number", "text") and
                           self.text(i) != "return" or self.text(i) in (")", "]", "}"))

    def has_blanks_around(self, i):
        token = self.tokens[i]
        return (self.source[token.begin - 1:token.begin].isspace() and
                self.source[token.end:token.end + 1].isspace())

    def is_checked_by_the_compiler(self, i):
        """Whether token i stands in a static_assert."""
        while i >= 0 and self.text(i) not in (";", "{", "}", "static_assert"):
            i -= 1
        return self.text(i) == "static_assert"

    def add(self, kind, begin, end, plain, *switched):
        """Adds the fault that replaces source[begin:end], if the lines really change."""
        first = self.source.rfind("\n", 0, begin) + 1
        last = self.source.find("\n", end)
        last = len(self.source) if last < 0 else last
        before = " ".join(self.source[first:last].split())
        after = " ".join((self.source[first:begin] + plain + self.source[end:last]).split())
        count = self.seen[before, after] = self.seen.get((before, after), 0) + 1
        if count > 1:
            after += f" // number {count}"
        self.faults.append(Fault(self.path, self.source.count("\n", 0, begin) + 1, kind, before,
                                 after, begin, end, plain, switched))

    def number(self, i):
        token = self.tokens[i]
        if self.is_size_of_array(i):
            return
        wrong = changed_number(token.text)
        if wrong:
            self.add("constant", token.begin, token.end, wrong,
                     (token.begin, token.end - token.begin,
                      "planted::value({}, " + f"{token.text}, {wrong})"))

    def is_size_of_array(self, i):
        """Whether the number stands in `Type name[2][3]`: more room is no fault that shows."""
        k = i - 1
        while self.text(k) == "[" or self.text(k) == "]":
            k = self.partner.get(k, k) - 1 if self.text(k) == "]" else k - 1
        return k < i - 1 and k > 0 and (
            self.tokens[k].kind == self.tokens[k - 1].kind == "word" or self.text(k - 1) == ">")

    def word(self, i):
        token = self.tokens[i]
        if token.text in ("true", "false"):
            wrong = "false" if token.text == "true" else "true"
            self.add("constant", token.begin, token.end, wrong,
                     (token.begin, len(token.text), "planted::value({}, " + f"{token.text}, {wrong})"))
        if token.text in ("if", "while") and self.text(i + 1) == "(" and i + 1 in self.partner:
            begin, end = self.tokens[i + 1].end, self.tokens[self.partner[i + 1]].begin
            inside = self.source[begin:end]
            if ";" in inside or re.search(r"[^=!<>]=[^=]", inside):
                return
            self.add("condition", begin, end, "false",
                     (begin, 0, "!planted::is({}) && ("), (end, 0, ")"))
            if token.text == "if":
                self.add("condition", begin, end, "true",
                         (begin, 0, "planted::is({}) || ("), (end, 0, ")"))

    def mark(self, i):
        token = self.tokens[i]
        size = token.end - token.begin
        if token.text in ASSIGNMENT:
            self.add("operator", token.begin, token.end, ASSIGNMENT[token.text],
                     (token.end, 0, " planted::At<{}>{{}} " + token.text))
        elif token.text in BINARY and self.has_blanks_around(i) and self.is_operand_end(i - 1):
            self.add("operator", token.begin, token.end, BINARY[token.text],
                     (token.end, 0, " planted::At<{}>{{}} " + token.text))
        elif token.text in "!-" and not self.is_operand_end(i - 1) and (
                self.text(i + 1) == "(" or self.tokens[i + 1].kind == "word"):
            name = "Not" if token.text == "!" else "Minus"
            self.add("operator", token.begin, token.end, "",
                     (token.begin, size, f"planted::{name}<{{}}>{{{{}}}} % "))
        elif token.text in ("&&", "||") and self.has_blanks_around(i):
            self.logical(i)

    def logical(self, i):
        """Each side of `a && b` as if it were true, of `a || b` as if it were false."""
        token = self.tokens[i]
        stops = {",", ";", "?", ":", "||", "=", "return"} | (
            {"&&"} if token.text == "&&" else set())
        neutral, switch = ("true", "planted::is({}) || (") if token.text == "&&" else (
            "false", "!planted::is({}) && (")
        for step in (-1, 1):
            k = i + step
            while 0 <= k < len(self.tokens) and self.text(k) not in stops:
                if self.text(k) in "([{" if step < 0 else self.text(k) in ")]}":
                    break
                k = self.partner.get(k, k) + step
            near, far = (self.tokens[i + step], self.tokens[k - step])
            begin, end = (far.begin, near.end) if step < 0 else (near.begin, far.end)
            if end > begin:
                self.add("condition", begin, end, neutral,
                         (begin, 0, "(" + switch), (end, 0, "))"))

    def statement(self, i):
        """The statement that starts at token i, removed."""
        if self.tokens[i].kind == "text" or self.text(i) in NOT_A_STATEMENT:
            return
        k = i
        declares = False
        in_front = True  # of the first call or assignment
        while k < len(self.tokens) and self.text(k) != ";":
            if self.text(k) in "{}":
                return
            if in_front and k > i and self.tokens[k].kind == "word":
                declares |= self.tokens[k - 1].kind == "word" or self.text(k - 1) in (">", "&", "*")
            in_front &= self.text(k) not in ("(", "=", "[") and not self.text(k).endswith("=")
            k = self.partner[k] + 1 if self.text(k) in ("(", "[") and k in self.partner else k + 1
        starts = self.tokens[i].text
        if k == len(self.tokens) or k == i or (
                declares and starts not in ("throw", "delete")) or (
                starts == "return" and k > i + 1):
            return
        begin, end = self.tokens[i].begin, self.tokens[k].end
        if "{" not in self.source[begin:end]:
            self.add("statement", begin, end, ";", (begin, 0, "if (!planted::is({})) {{ "),
                     (end, 0, " }}"))


def changed_number(text):
    """A number beside this one, in the same type; nothing for what is no number."""
    match = re.fullmatch(r"(0[xX][\da-fA-F']+|0[bB][01']+|[\d']+)([uUlLzZ]*)", text)
    if match:
        value = int(match.group(1).replace("'", ""), 0 if match.group(1)[0] != "0" else
                    {"x": 16, "b": 2}.get(match.group(1)[1:2].lower(), 8))
        step = 1 if value == 0 or hashlib.sha256(text.encode()).digest()[0] % 2 else -1
        return f"{value + step}{match.group(2)}"
    match = re.fullmatch(r"([\d.']*(?:[eE][+-]?\d+)?)([fFlL]?)", text)
    if match:
        value = float(match.group(1).replace("'", ""))
        wrong = repr(2.0 * value if value else 1.0)
        return None if "inf" in wrong else wrong + match.group(2)
    return None


def faults_of(path, source):
    return Scan(path, source).faults


def switched_source(source, faults):
    """The source with each of these (number, fault) able to be switched on."""
    edits = []
    for number, fault in faults:
        for order, (position, drop, text) in enumerate(fault.switched):
            width = fault.end - fault.begin
            # What ends here comes first, inner before outer; what begins here, outer before inner.
            rank = (0, width) if order == 1 else (1, -width)
            edits.append((position, rank, drop, text.format(number)))
    parts, at = [], 0
    for position, _, drop, text in sorted(edits):
        parts += [source[at:position], text]
        at = position + drop
    return "".join(parts) + source[at:]
