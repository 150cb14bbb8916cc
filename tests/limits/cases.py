"""Sources that are deep, long or many, each made from one number.

A case is a function of the number of pieces. It gives the chunks of the source, and may write
library files beside it; nothing is ever held in one piece, so that this process stays small.
"""

BLOCK = 1000


def repeated(piece, count):
    whole, rest = divmod(count, BLOCK)
    block = piece * BLOCK
    for _ in range(whole):
        yield block
    yield piece * rest


def numbered(form, count):
    """The form with each number from 0 in the place of every %d."""
    places = form.count("%d")
    for start in range(0, count, BLOCK):
        yield "".join(form % ((number,) * places)
                      for number in range(start, min(start + BLOCK, count)))


def in_function(before, piece, count, after):
    yield "S.script { void run() { " + before
    yield from repeated(piece, count)
    yield after + " } }\n"


def nested(opening, inner, closing):
    """An expression, unless a block closes it."""
    end = "" if "}" in closing and ")" not in closing and "=" not in opening else ";"
    if closing.startswith("} catch"):
        end = ""

    def chunks(count):
        yield "S.script { void run() { "
        yield from repeated(opening, count)
        yield inner
        yield from repeated(closing, count)
        yield end + " } }\n"
    return chunks


def chain(before, piece, after=";"):
    return lambda count: in_function(before, piece, count, after)


# Not nested in the source: any length.
CHAINS = {
    "terms of +": chain("x = 1", "+1"),
    "names of +": chain("x = a", "+a"),
    "terms of *": chain("x = 1", "*1"),
    "terms of ==": chain("x = 1", "==1"),
    "members": chain("x = a", ".a"),
    "calls": chain("x = f", "(1)"),
    "indices": chain("x = a", "[1]"),
    "else if": chain("if (a) { x = 1; }", " else if (a) { x = 1; }", ""),
    "elements of a list": chain("x = {1", ",1", "};"),
    "elements of a bracket list": chain("x = [1", ",1", "];"),
    "arguments": chain("f(1", ",1", ");"),
    "fields of an object": chain("x = A { a = 1", ", a = 1", "};"),
    "statements": chain("", "a;", ""),
    "declarations": chain("", "int a = 1;", ""),
    "empty objects": chain("", "a{};", ""),
    "ranges": chain("", "[1,2,3];", ""),
    "deferred blocks": chain("", "defer{}", ""),
    "blocks": chain("", "{ x = 1; }", ""),
    "loops": chain("", "while (a) { x = 1; }", ""),
    "lists": chain("", "x = {1, 2};", ""),
    "ternaries": chain("", "x = a ? 1 : 2;", ""),
    "comprehensions": chain("", "x = [a for a in b where a];", ""),
    "unary minus": chain("x = 1", "+-1"),
    "when cases": chain("when (a) {", "is int -> 1;", "}"),
    "stray tokens": lambda count: repeated(";", count),
    "comments": lambda count: repeated("/* a */ // b\n", count),
    "colours": chain("", "x = #ff0000;", ""),
    "texts": chain("", 'x = "a\\n";', ""),
    "one long text": lambda count: in_function('x = "', "abcdefghij", count, '";'),
    "one long line": chain("", 'x = y + "text" * 25;', ""),
    "classes": lambda count: numbered("class C%d { int a; int b() { return a; } }\n", count),
    "able methods": lambda count: ["able A {", *repeated("go();", count), "}\n"],
    "aliases": lambda count: numbered("using type T%d = int;\n", count),
    "type names": lambda count: numbered("typename T%d;\n", count),
    "functions": lambda count: numbered("int f%d(int a) { return a; }\n", count),
    "functions of a script": lambda count: [
        "S.script {", *numbered("int f%d(int a) { return a; }\n", count), "}\n"],
    "handlers": lambda count: [
        "vorla M { button b { text = \"b\"; } }\nS.script {",
        *repeated("on b.click { x = 1; }\n", count), "}\n"],
    "properties": lambda count: ["vorla M { ", *repeated("title = \"a\";", count), "}\n"],
    "controls": lambda count: [
        "vorla M { ", *numbered('button b%d { text = "b"; x = 1; y = 2; }\n', count), "}\n"],
    "tabs": lambda count: ["vorla M { ", *repeated("tab a{}", count), "}\n"],
    "items": lambda count: [
        "vorla M { listbox l { items = {\"a\"", *repeated(', "a"', count), "}; } }\n"],
}

# Nested in the source: up to a fixed depth, then an error.
NESTED = {
    "parentheses": nested("(", "a", ")"),
    "brackets": nested("[", "a", "]"),
    "braces of lists": nested("f({", "a", "})"),
    "blocks": nested("{", "a;", "}"),
    "if": nested("if (a) {", "a;", "}"),
    "while": nested("while (a) {", "a;", "}"),
    "calls": nested("f(", "a", ")"),
    "indices": nested("a[", "a", "]"),
    "objects": nested("A { a = ", "a", "}"),
    "ternaries": nested("a ? a : ", "a", ""),
    "ternaries in the middle": nested("a ? ", "a", " : a"),
    "assignments": nested("a = ", "a", ""),
    "comprehensions": nested("[a for a in ", "a", "]"),
    "unary minus": nested("-", "a", ""),
    "not": nested("!", "a", ""),
    "is": nested("is(", "a", ", int)"),
    "try": nested("try {", "a;", "} catch (e) { }"),
}


def handled_controls(count):
    """Every handler is written with a line for every control."""
    return ["vorla M { ", *numbered("button b%d { on click { } }\n", count), "}\n"]


def write_libraries(folder, count):
    """So many files, all imported by the first."""
    with open(folder / "all.orlib", "w", encoding="ascii") as file:
        for chunk in numbered('import "l%d.orlib"\n', count):
            file.write(chunk)
    for number in range(count):
        (folder / f"l{number}.orlib").write_text(f"int f{number}(int a) {{ return a; }}\n")


def write_import_chain(folder, count):
    """Each file imports the next; the last defines what the program calls."""
    (folder / "all.orlib").write_text('import "l0.orlib"\n')
    for number in range(count):
        (folder / f"l{number}.orlib").write_text(
            f'import "l{number + 1}.orlib"\nint f{number}(int a) {{ return a; }}\n')
    (folder / f"l{count}.orlib").write_text("int last(int a) { return a; }\n")


LIBRARY_PROGRAM = 'import "all.orlib";\nS.script { void run() { x = f0(1); } }\n'
