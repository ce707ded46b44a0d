#!/usr/bin/env python3
"""Generates structs and compares where the interpreter and the C compiler place their members.

layout.py ZY CC WORK: the same declarations are compiled by CC and run by ZY; each program prints
the size of every struct and, after a member has been filled with ones, the bytes of the object that
are not zero. Equal output means equal offsets, sizes and bit positions. The structs are the same on
every run.

Where the interpreter has rules of its own, the generator keeps to what both agree on:
 - a pair of floats or doubles is aligned to its whole size, so complex members are left out;
 - bit-fields start a new unit when their type has another size, and the unit's type aligns the
   struct, as -mms-bitfields lays them out;
 - an unnamed field of width 0 stands behind a bit-field, and packing isn't combined with bit-fields,
   nor with members that are packed structs themselves.
"""
import random
import subprocess
import sys
from pathlib import Path

SCALARS = ["char", "unsigned char", "short", "unsigned short", "int", "unsigned int", "long long",
           "unsigned long long", "float", "double", "char *", "int *", "double *"]
WHOLE = ["char", "unsigned char", "short", "unsigned short", "int", "unsigned int", "long long",
         "unsigned long long"]
BITS = {"char": 8, "short": 16, "int": 32, "long long": 64}
COUNT = 300


def width_of(kind):
    return BITS[kind.replace("unsigned ", "")]


class Struct:
    def __init__(self, name, word):
        self.name, self.word = name, word
        self.lines, self.fills, self.pack = [], [], 0
        self.has_bits = False

    def members(self, rng, count, earlier, prefix="m", depth=0):
        for i in range(count):
            name, choice = f"{prefix}{i}", rng.random()
            if choice < 0.25:
                self.bits(rng, name)
            elif choice < 0.4 and earlier:
                self.nested(rng, name, earlier)
            elif choice < 0.5 and depth < 2:
                self.anonymous(rng, name, earlier, depth)
            else:
                self.scalar(rng, name)

    def anonymous(self, rng, name, earlier, depth):
        around, self.word = self.word, rng.choice(["struct", "union"])
        self.lines.append(f"{self.word} {{")
        self.members(rng, rng.randint(1, 3), earlier, name + "_", depth + 1)
        self.lines.append("};")
        self.word = around

    def scalar(self, rng, name):
        kind = rng.choice(SCALARS)
        dims = rng.choice(["", "", "", f"[{rng.randint(1, 4)}]",
                           f"[{rng.randint(1, 3)}][{rng.randint(1, 3)}]"])
        self.lines.append(f"{kind} {name}{dims};")
        self.fills.append((name, None))

    def nested(self, rng, name, earlier):
        inner = rng.choice(earlier)
        dims = rng.choice(["", f"[{rng.randint(1, 3)}]"])
        self.lines.append(f"{inner.word} {inner.name} {name}{dims};")
        self.fills.append((name, None))

    def bits(self, rng, name):
        self.has_bits = True
        for j in range(rng.randint(1, 5)):
            kind = rng.choice(WHOLE)
            width = rng.randint(1, width_of(kind))
            self.lines.append(f"{kind} {name}_b{j} : {width};")
            self.fills.append((f"{name}_b{j}", kind))
            if self.word == "struct" and rng.random() < 0.15:
                self.lines.append(f"{kind} : 0;")

    def text(self):
        body = "\n".join("    " + line for line in self.lines)
        text = f"{self.word} {self.name} {{\n{body}\n}};\n"
        if self.pack:
            text = f"#pragma pack({self.pack})\n{text}#pragma pack()\n"
        return text

    def checks(self):
        yield f'printf("{self.name} %d\\n", (int)sizeof({self.word} {self.name}));'
        yield f"{self.word} {self.name} v{self.name};"
        for name, kind in self.fills:
            yield f"clear((char *)&v{self.name}, (int)sizeof(v{self.name}));"
            if kind:
                yield f"v{self.name}.{name} = -1;"
            else:
                yield f"fill((char *)&v{self.name}.{name}, (int)sizeof(v{self.name}.{name}));"
            yield f'show("{name}", (unsigned char *)&v{self.name}, (int)sizeof(v{self.name}));'


def make_structs(packs):
    rng = random.Random(20)
    structs, plain = [], []
    for n in range(COUNT):
        made = Struct(f"s{n}", "union" if rng.random() < 0.15 else "struct")
        made.members(rng, rng.randint(1, 6), plain)
        if not made.has_bits and packs and rng.random() < 0.4:
            made.pack = rng.choice([1, 2, 4, 8])
        if not made.pack:
            plain.append(made)
        structs.append(made)
    return structs


HELPERS = """
void clear(char *p, int n) { int i; for (i = 0; i < n; i++) p[i] = 0; }
void fill(char *p, int n) { int i; for (i = 0; i < n; i++) p[i] = -1; }
void show(char *name, unsigned char *p, int n) {
    int i;
    printf(" %s", name);
    for (i = 0; i < n; i++) if (p[i]) printf(" %d:%d", i, p[i]);
    printf("\\n");
}
"""


def program(structs):
    parts = [s.text() for s in structs] + [HELPERS]
    for s in structs:
        declare, *rest = [line for line in s.checks()]
        body = "\n    ".join([rest[0], declare] + rest[1:])
        parts.append(f"void check_{s.name}() {{\n    {body}\n}}\n")
    calls = "\n    ".join(f"check_{s.name}();" for s in structs)
    parts.append(f"int main() {{\n    {calls}\n    return 0;\n}}\n")
    return "".join(parts)


def run(command, **options):
    done = subprocess.run(command, capture_output=True, text=True, timeout=120, **options)
    if done.returncode or done.stderr:
        sys.exit(f"{command}: status {done.returncode}\n{done.stderr[:2000]}")
    return done.stdout


def main():
    zy, cc, work = sys.argv[1:4]
    folder = Path(work)
    folder.mkdir(parents=True, exist_ok=True)
    text = program(make_structs(packs=True))
    (folder / "layout.zy").write_text(text)
    (folder / "layout.c").write_text("#include <stdio.h>\n" + text)
    run([cc, "-std=gnu11", "-w", "-mms-bitfields", "-o", str(folder / "layout"),
         str(folder / "layout.c")])
    expected = run([str(folder / "layout")]).splitlines()
    found = run([zy, "layout.zy"], cwd=folder).splitlines()
    wrong = [(e, f) for e, f in zip(expected, found) if e != f]
    if wrong or len(expected) != len(found):
        for e, f in wrong[:10]:
            print(f"C  {e}\nZy {f}")
        sys.exit(f"{len(wrong)} lines of {len(expected)} differ ({len(found)} found)")
    print(f"{COUNT} structs, {len(expected)} lines agree")


main()
