"""Finds in the syntax tree the places of a source file where a small fault can be planted."""
import dataclasses
import pathlib
import sys

try:
    from clang.cindex import CursorKind, Index, TypeKind
except ImportError:
    sys.exit("Clang's Python module is missing: install python3-clang-14 (scripts/install-missing.sh mutate) and use /usr/bin/python3")

OPERATORS = {
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"],
    "&": ["|"], "|": ["&"], "^": ["&"], "<<": [">>"], ">>": ["<<"],
    "+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="], "|=": ["&="], "&=": ["|="], "^=": ["|="], "<<=": [">>="], ">>=": ["<<="]}
UNARY = {"++": "--", "--": "++", "-": "", "!": "", "~": ""}
NUMBERS = (TypeKind.CHAR_U, TypeKind.UCHAR, TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.USHORT, TypeKind.UINT, TypeKind.ULONG,
           TypeKind.ULONGLONG, TypeKind.SHORT, TypeKind.INT, TypeKind.LONG, TypeKind.LONGLONG, TypeKind.FLOAT,
           TypeKind.DOUBLE, TypeKind.LONGDOUBLE)
FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.FUNCTION_TEMPLATE, CursorKind.CONVERSION_FUNCTION,
             CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR)
JUMPS = (CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT, CursorKind.RETURN_STMT)
BRANCHES = (CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.FOR_STMT, CursorKind.CXX_FOR_RANGE_STMT, CursorKind.DO_STMT)


@dataclasses.dataclass(frozen=True, order=True)
class Fault:
    """One small change: the bytes from `start` to `end` of a file become `new`."""
    file: str
    start: int
    end: int
    kind: str
    new: str
    function: str = ""  # the only function whose code changes, as its symbol spells it; empty if none

    def planted_in(self, text):
        return text[:self.start] + self.new + text[self.end:]

    def position(self, text):
        line = text.count("\n", 0, self.start) + 1
        return line, self.start - text.rfind("\n", 0, self.start)

    def lines(self, text):
        """Returns the changed lines before and after, with single blanks: how a fault is known in the list of equivalent ones."""
        first, last = text.rfind("\n", 0, self.start) + 1, text.find("\n", self.end)
        before = text[first:last]
        after = text[first:self.start] + self.new + text[self.end:last]
        return " ".join(before.split()), " ".join(after.split())


class Finder:
    """Collects the faults of one file."""

    def __init__(self, top, file):
        self.file, self.faults, self.function = file, [], ""
        path = str(top / file)
        source = pathlib.Path(path).read_bytes()
        self.text = source.decode("ascii")  # offsets are bytes: only in ASCII are they characters too
        unit = Index.create().parse(path, args=["-x", "c++", "-std=c++17", f"-I{top / 'src'}"])
        broken = [str(d) for d in unit.diagnostics if d.severity >= 3]
        if broken:
            sys.exit("\n".join(broken))
        for cursor in unit.cursor.get_children():
            if cursor.location.file and cursor.location.file.name == path:
                self.visit(cursor, None)

    def range_of(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def text_of(self, cursor):
        start, end = self.range_of(cursor)
        return self.text[start:end]

    def add(self, kind, start, end, new):
        if self.text[start:end] != new and "\\\n" not in self.text[start:end]:
            self.faults.append(Fault(self.file, start, end, kind, new, self.function))

    def visit(self, cursor, function):
        kind = cursor.kind
        if kind == CursorKind.STATIC_ASSERT:
            return
        children = list(cursor.get_children())
        if kind in FUNCTIONS:
            function = cursor
            before, self.function = self.function, self.name_of(cursor)
        elif kind == CursorKind.LAMBDA_EXPR:
            function = None
        elif kind in (CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR) and len(children) == 2:
            self.between(*children)
        elif kind == CursorKind.CALL_EXPR and cursor.spelling.startswith("operator") and len(children) == 3:
            self.between(children[0], children[2])
        elif kind == CursorKind.CALL_EXPR:
            self.arguments(list(cursor.get_arguments()))
        elif kind == CursorKind.UNARY_OPERATOR:
            self.unary(cursor, children)
        elif kind in (CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL, CursorKind.CHARACTER_LITERAL,
                      CursorKind.CXX_BOOL_LITERAL_EXPR):
            self.constant(cursor)
        elif kind == CursorKind.CONDITIONAL_OPERATOR:
            self.condition(children[0], ("true", "false"))
        elif kind == CursorKind.IF_STMT:
            self.if_condition(children)
        elif kind == CursorKind.WHILE_STMT:
            self.condition(children[0], ("false",))
        elif kind == CursorKind.RETURN_STMT and children and function:
            self.result(children[0], function.result_type.get_canonical())
        if kind == CursorKind.COMPOUND_STMT:
            self.statements(children)
        elif kind in BRANCHES:
            self.statements([child for child in children if self.is_body(child)])
        for child in children:
            self.visit(child, function)
        if kind in FUNCTIONS:
            self.function = before

    def name_of(self, function):
        """Returns the name in the symbol of a function, or "" if it may be evaluated while compiling and have none."""
        if "constexpr" in self.text_of(function).split("{")[0]:
            return ""
        return function.spelling if function.spelling.startswith("operator") else function.spelling.split("<")[0]

    def is_body(self, statement):
        """Returns whether the statement follows a closing bracket or `else`, as what depends on a condition does."""
        before = self.text[:self.range_of(statement)[0]].rstrip()
        return before.endswith((")", "else"))

    def between(self, left, right):
        start, end = self.range_of(left)[1], self.range_of(right)[0]
        operator = self.text[start:end].strip() if start < end else ""
        at = start + self.text[start:end].find(operator)
        for other in OPERATORS.get(operator, []):
            self.add("operator", at, at + len(operator), other)

    def unary(self, cursor, children):
        start, end = self.range_of(cursor)
        for operator, other in UNARY.items():
            if self.text.startswith(operator, start) and children and self.range_of(children[0])[0] > start:
                return self.add("operator", start, start + len(operator), other)
            if len(operator) == 2 and self.text.endswith(operator, start, end):
                return self.add("operator", end - 2, end, other)

    def constant(self, cursor):
        start, end = self.range_of(cursor)
        value = self.text[start:end]
        if value in ("true", "false"):
            self.add("constant", start, end, "false" if value == "true" else "true")
        elif value.startswith("'"):
            self.add("constant", start, end, f"char({value} + 1)")
        elif value[:1].isdigit() or value.startswith("."):
            self.add("constant", start, end, f"({value} + 1)")
            self.add("constant", start, end, f"({value} - 1)")

    def condition(self, cursor, values):
        start, end = self.range_of(cursor)
        for value in (*values, f"!({self.text[start:end]})"):
            self.add("condition", start, end, value)

    def if_condition(self, children):
        for child in children:
            start, end = self.range_of(child)
            if child.kind.is_expression() and self.text[:start].rstrip().endswith(("(", ";")) and \
                    self.text[end:].lstrip().startswith(")"):
                return self.condition(child, ("true", "false"))

    def arguments(self, arguments):
        for left, right in zip(arguments, arguments[1:]):
            (start, end), (next_start, next_end) = self.range_of(left), self.range_of(right)
            same = left.type.get_canonical().spelling == right.type.get_canonical().spelling
            if same and start < end <= next_start < next_end and self.text[end:next_start].strip() == ",":
                swapped = self.text[next_start:next_end] + self.text[end:next_start] + self.text[start:end]
                self.add("swapped arguments", start, next_end, swapped)

    def statements(self, statements):
        for statement in statements:
            start, end = self.range_of(statement)
            if (statement.kind.is_expression() or statement.kind in JUMPS) and self.text[end:].lstrip().startswith(";"):
                if statement.kind != CursorKind.RETURN_STMT or self.text[start:end].strip() == "return":
                    self.add("dropped statement", start, end, "")

    def result(self, expression, result_type):
        start, end = self.range_of(expression)
        value = self.text[start:end]
        if result_type.kind == TypeKind.BOOL:
            self.add("return value", start, end, f"!({value})")
        elif result_type.kind in NUMBERS:
            self.add("return value", start, end, "1" if value.rstrip("uUfF.") == "0" else "0")
        elif result_type.kind == TypeKind.POINTER:
            self.add("return value", start, end, "nullptr")
        elif result_type.kind not in (TypeKind.LVALUEREFERENCE, TypeKind.RVALUEREFERENCE, TypeKind.VOID):
            self.add("return value", start, end, "{}")


def faults_of(top, files):
    """Returns the faults that can be planted in the files, by place, in the order of the text."""
    places = {}
    for file in files:
        for fault in sorted(set(Finder(top, file).faults)):
            places.setdefault((file, fault.start, fault.kind), []).append(fault)
    return list(places.values())
