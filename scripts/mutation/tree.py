"""The copy of the project that is built with all mutants in it."""

import hashlib
import json
import pathlib
import re
import shlex
import subprocess

from mutation.find import Finder, arguments_of
from mutation.rewrite import rewrite

NOT_CONSTANT = re.compile(
    r"[‘']([\w:]+)[’'] (?:is not usable in a constant expression|was not (?:initialized with|declared)"
    r"|was not initialized)|value of [‘']([\w:]+)[’'] is not usable")
ERROR_LINE = re.compile(r"^[^\n:]*?([\w./-]+):(\d+):\d+: error:", re.M)


def write_if_changed(path, content):
    """Leaves a file alone that is as it should be, so that nothing is built for it."""
    if path.exists() and path.read_bytes() == content:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


class Tree:
    """`build/mutants/tree`, built in `build/mutants/build`."""

    def __init__(self, root):
        self.root = root
        self.folder = root / "build/mutants/tree"
        self.build = root / "build/mutants/build"
        self.header = root / "scripts/mutation/Mutant.h"
        self.untried = []  # mutants that do not compile

    def run(self, *command):
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)

    def copy(self, mutated):
        """Brings the copy up to date, but for the files that hold mutants."""
        listed = subprocess.run(
            ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            cwd=self.root, check=True, capture_output=True, text=True).stdout.split("\0")
        wanted = {name for name in listed if name and (self.root / name).is_file()}
        for name in wanted:
            if name in mutated and (self.folder / name).exists():
                continue
            write_if_changed(self.folder / name, (self.root / name).read_bytes())
            (self.folder / name).chmod((self.root / name).stat().st_mode)
        for path in self.folder.rglob("*"):
            if path.is_file() and str(path.relative_to(self.folder)) not in wanted:
                path.unlink()

    def configure(self):
        self.run("cmake", "-S", str(self.folder), "-B", str(self.build), "-G", "Ninja",
                 "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -w",
                 "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DZANTO_BUILD_BENCHMARKS=OFF",
                 "-DZANTO_BUILD_EXAMPLES=OFF")
        commands = json.loads((self.build / "compile_commands.json").read_text())
        self.commands = {}
        for entry in commands:
            name = str(pathlib.Path(entry["file"]).resolve())
            if name.startswith(str(self.folder)):
                name = str(pathlib.Path(name).relative_to(self.folder))
                self.commands.setdefault(name, (shlex.split(entry["command"]), entry["directory"]))

    def mutate(self, names):
        """Finds and writes the mutants of the files; gives all of them, numbered."""
        mutants = []
        for name in names:
            if name not in self.commands:
                raise SystemExit(f"mutants: {name} is not compiled by itself")
            arguments = arguments_of(self.commands[name][0])
            arguments = [a.replace(str(self.folder), str(self.root)) for a in arguments]
            source = (self.root / name).read_bytes()
            finder = Finder(self.root / name, source, [*arguments, f"-I{self.root}"])
            found = finder.find()
            for number, mutant in enumerate(found, start=len(mutants)):
                mutant.number, mutant.file = number, name
            mutants += self.write(name, source, found, finder.demoted)
        return mutants

    def write(self, name, source, found, demoted):
        """Writes one file; what the compiler refuses is taken out and noted."""
        kept = found
        for _ in range(12):
            content = rewrite(source, kept, [offset for _, offset in demoted], self.header)
            errors = self.errors(name, content)
            if not errors:
                write_if_changed(self.folder / name, content)
                break
            refused = {n.split("::")[-1] for pair in NOT_CONSTANT.findall(errors) for n in pair if n}
            again = [d for d in demoted if d[0] in refused]
            if again:
                demoted = [d for d in demoted if d not in again]
                ends = [source.find(b";", offset) for _, offset in again]
                spans = [(offset, end) for (_, offset), end in zip(again, ends)]
                kept = [m for m in kept if not any(a < m.start < b for a, b in spans)]
                continue
            lines = {int(line) for path, line in ERROR_LINE.findall(errors) if path.endswith(f"{name}.trial.cpp")}
            fewer = [m for m in kept if not self.touches(source, m, lines)]
            if len(fewer) == len(kept):
                raise SystemExit(f"mutants: {name} does not compile with its mutants:\n{errors}")
            kept = fewer
        numbers = {m.number for m in kept}
        self.untried += [m for m in found if m.number not in numbers]
        return found

    def touches(self, source, mutant, lines):
        """Whether an error in one of the lines may be this mutant's. A swap wraps its whole row."""
        start, end = (mutant.run[0][0], mutant.run[-1][1]) if mutant.run else (mutant.start, mutant.start)
        first, last = (source.count(b"\n", 0, offset) + 1 for offset in (start, end))
        return any(first <= line <= last for line in lines)

    def errors(self, name, content):
        """What the compiler says against a content of the file."""
        trial = self.folder / f"{name}.trial.cpp"
        trial.write_bytes(content)
        command, directory = self.commands[name]
        command = [word for word in command if word != "-c" and "ccache" not in word]
        at = command.index("-o")
        command = command[:at] + command[at + 2:]
        command = [str(trial) if word == str(self.folder / name) else word for word in command]
        result = subprocess.run([*command, "-O0", "-S", "-o", "/dev/null"], cwd=directory,
                                capture_output=True, text=True)
        trial.unlink()
        return result.stderr if result.returncode else ""

    def fingerprint(self):
        """Of all files of the copy, mutants included."""
        digest = hashlib.sha256()
        for path in sorted(p for p in self.folder.rglob("*") if p.is_file()):
            digest.update(str(path.relative_to(self.folder)).encode() + path.read_bytes())
        return digest.hexdigest()

    def compile(self):
        listed = subprocess.run(["cmake", "--build", str(self.build), "--target", "help"], check=True,
                                capture_output=True, text=True).stdout
        programs = re.findall(r"^(zanto-[\w-]+-tests): phony", listed, re.M)
        programs = [p for p in programs if p != "zanto-conventions-tests"]
        command = ["cmake", "--build", str(self.build), "--target", *programs, "zanto-player"]
        subprocess.run([*command, "--", "--quiet"], check=True)
