#!/usr/bin/env python3
"""Programs of functions like those of generate_source, in other languages:

    reference_source.py c|pascal|vala|nim LINES > big.c

Ten lines a function, as there: a comment, declarations, a text, a list, a loop, a condition, a
record and a method call. The numbers differ from function to function; the same call always gives
the same text.
"""
import random
import sys

NOUNS = ["price", "width", "total", "order", "client", "weight", "speed", "height"]

# Each language: what stands before the functions, one function, what stands behind them.
LANGUAGES = {
    "c": (
        """#include <stdio.h>
struct Record { long id, count; const char *label; };
static long area(struct Record *self, long factor) { return self->id * self->count * factor; }
""",
        """/* updates the {noun} of step {n} */
long update_{noun}_{n}(long first, long second) {{
    long {noun}{n} = first * {a} + {b};
    char name{n}[64]; snprintf(name{n}, sizeof name{n}, "{noun} no. {c}: %ld", second);
    long list{n}[4] = {{{noun}{n}, {d}, {e}, second}};
    for (int item{n} = 0; item{n} < 4; item{n}++) {{ second = second + list{n}[item{n}] * {a}.5; }}
    if ({noun}{n} > {b}) {{ puts(name{n}); }} else {{ second = {c}; }}
    struct Record r{n} = {{{d}, first, name{n}}};
    return area(&r{n}, {e}) - list{n}[0] / (second - {a});
}}
""",
        "",
    ),
    "pascal": (
        """{$mode objfpc}{$H+}
unit big;
interface
implementation
uses SysUtils;
type TRecord = record id, count: Int64; name: string; end;
function area(const r: TRecord; factor: Int64): Int64; begin area := r.id * r.count * factor end;
""",
        """{{ updates the {noun} of step {n} }}
function update_{noun}_{n}(first, second: Int64): Int64;
var {noun}{n}, item{n}: Int64; name{n}: string; list{n}: array[0..3] of Int64; r{n}: TRecord; begin
    {noun}{n} := first * {a} + {b}; name{n} := '{noun} no. {c}: ' + IntToStr(second);
    list{n}[0] := {noun}{n}; list{n}[1] := {d}; list{n}[2] := {e}; list{n}[3] := second;
    for item{n} := 0 to 3 do begin second := second + round(list{n}[item{n}] * {a}.5); end;
    if {noun}{n} > {b} then begin writeln(name{n}) end else begin second := {c} end;
    r{n}.id := {d}; r{n}.count := first; r{n}.name := name{n};
    update_{noun}_{n} := area(r{n}, {e}) - list{n}[0] div (second - {a});
end;
""",
        "end.\n",
    ),
    "vala": (
        """class Record { public int64 id; public int64 count; public string name;
    public int64 area(int64 factor) { return id * count * factor; } }
""",
        """// updates the {noun} of step {n}
int64 update_{noun}_{n}(int64 first, int64 second_) {{
    int64 second = second_; int64 {noun}{n} = first * {a} + {b};
    string name{n} = "{noun} no. {c}: " + second.to_string();
    int64[] list{n} = {{{noun}{n}, {d}, {e}, second}};
    foreach (int64 item{n} in list{n}) {{ second = second + (int64)(item{n} * {a}.5); }}
    if ({noun}{n} > {b}) {{ print(name{n}); }} else {{ second = {c}; }}
    Record r{n} = new Record(); r{n}.id = {d}; r{n}.count = first; r{n}.name = name{n};
    return r{n}.area({e}) - list{n}[0] / (second - {a});
}}
""",
        "",
    ),
    "nim": (
        """type Record = object
  id, count: int
  name: string
proc area(r: Record, factor: int): int = r.id * r.count * factor
""",
        """# updates the {noun} of step {n}
proc update_{noun}_{n}*(first, start: int): int =
  var second = start; var {noun}{n} = first * {a} + {b}
  let name{n} = "{noun} no. {c}: " & $second
  let list{n} = [{noun}{n}, {d}, {e}, second]
  for item{n} in list{n}: second = second + int(item{n}.float * {a}.5)
  if {noun}{n} > {b}: echo name{n}
  else: second = {c}
  let r{n} = Record(id: {d}, count: first, name: name{n})
  return r{n}.area({e}) - list{n}[0] div (second - {a})
""",
        "",
    ),
}


def main():
    if len(sys.argv) != 3 or sys.argv[1] not in LANGUAGES:
        sys.exit(__doc__)
    head, function, tail = LANGUAGES[sys.argv[1]]
    rng = random.Random(20240601)
    parts = [head]
    for number in range(int(sys.argv[2]) // 10):
        values = {key: rng.randrange(1, 100_000) for key in "abcde"}
        parts.append(function.format(n=number, noun=rng.choice(NOUNS), **values))
    parts.append(tail)
    sys.stdout.write("".join(parts))


main()
