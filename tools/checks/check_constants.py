#!/usr/bin/env python3
"""Changes each constant of the kernel in its last stated digit, one at a time, and lets the tests notice.

Changed is every floating and every integer literal in the code of every source file and header of the kernel and of the
bundled platform layer (comments, texts, characters and includes left out). The last stated digit goes up by one, a nine
down (0.008856 -> 0.008857, 95.049 -> 95.048); an integer goes up by one; a 0 in a row of decimals changes in the last
decimal of that row.

Caught: the compiler refuses the change, or a test fails, crashes or does not end. The tests of the matching suites
(SUITES) come first, those of all programs (TARGETS) after them, without those that UNASKED names. The tests themselves are
compiled once, with the unchanged headers: a changed header changes the kernel under programs that know the published
figures.

A change that nothing notices is a survivor. It must be explained in constants_explained.txt beside this script: a
reason (`why: ...`) and below it what it holds for, one `file number | line` each. The script fails when a survivor is
not explained, and a run over everything when an explanation belongs to no survivor any more.

All work is done in copies under the work folder; the results are kept there, so that a run goes on where it stopped:
what was caught stays caught while the file is the same, survivors are tried again unless they are explained.
"""

import argparse
import concurrent.futures
import fnmatch
import hashlib
import json
import math
import os
import pathlib
import queue
import re
import resource
import shlex
import shutil
import signal
import struct
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXPLAINED = pathlib.Path(__file__).with_name("constants_explained.txt")
FOLDERS = ["base", "spectral", "colorspace", "measurement", "cgats", "platform/default"]
TARGETS = ["qxcms_tests", "qxcms_failing_platform_tests", "qxcms_failing_memory_tests"]
# Tests of speed fail on a busy machine, and tests of the source text see no change of it.
UNASKED = "house.*:*InProportion:interpolation.aMillionPoints*"

# A run that takes this much more of the processor than it does on the unchanged kernel does not end; nor does one that
# waits for so long.
TIME_FACTOR, TIME_EXTRA, WAITING = 4, 4, 1200

# Hundreds of numbers and nothing else: changed in the compiled library instead of being compiled a thousand times.
TABLES = ["spectral/astm_tables.cpp", "spectral/density_filter_tables.cpp", "spectral/isotemperature_lines.cpp",
          "spectral/observer_tables.cpp"]
MEMORY_BYTES = 4 << 30

# The suites that are asked first. The first pattern that fits counts; what is not listed goes to all tests at once.
SUITES = [
    ("spectral/observer_tables.cpp", "observerTables.*"),
    ("spectral/astm_tables.cpp", "astmTables.*"),
    ("spectral/density_filter_tables.cpp", "densityFilterTables.*"),
    ("spectral/isotemperature_lines.cpp", "isotemperatureLines.*"),
    ("spectral/spectral_density.*", "spectralDensity.*:spectrum.*"),
    ("spectral/color_temperature.*", "colorTemperature.*"),
    ("spectral/illuminant_file.cpp", "illuminant*:registry*"),
    ("spectral/tilluminantfactoryholder.*", "registry*:illuminant*"),
    ("spectral/tilluminantandobserver.*", "weighting*:layout*:astmTables.*"),
    ("spectral/tilluminant.*", "illuminant*:registry*:layout*"),
    ("spectral/tobserver.*", "observer*:layout*"),
    ("spectral/tmeasgeom.*", "geometry*:layout*"),
    ("spectral/matching_spectrum.cpp", "matching*"),
    ("spectral/*", "spectrum*:layout*:observer*:*Spectrum*:spectralDensity*"),
    ("colorspace/color_difference.cpp", "colorDifference.*"),
    ("colorspace/fast_lab*", "fastLab.*:labBatch.*"),
    ("colorspace/lanes_*", "fastLab.*:labBatch.*"),
    ("colorspace/*appearance*", "ciecam*"),
    ("colorspace/tcolorspace*", "ciecam*:colorSpace*:batch*:layout*"),
    ("colorspace/txyzrspace*", "xyzrSpace.*:layout*"),
    ("colorspace/*", "labSpace.*:colorDifference.*:colorSpace*"),
    ("measurement/*", "*easurement*:*Spectrum*:layout*"),
    ("cgats/row_*", "rowScan.*:normalizer*"),
    ("cgats/*_repairs*", "normalizer*"),
    ("cgats/d*", "normalizer*:decimalText*"),
    ("cgats/tcgatsnormalizer*", "normalizer*"),
    ("cgats/text_*", "normalizer*:cgats*"),
    ("cgats/spectral_name.cpp", "normalizer*"),
    ("cgats/*", "cgats*:dataFormat*:field*:header*:solid*:comment*:document*:declared*:colorant*:nameIndex*"),
    ("base/byte_reader.h", "byteReader.*:illuminant*"),
    ("base/instruction_set*", "instructionSet.*:rowScan.*"),
    ("base/*", "number*:parse*:fixed*:general*:textTo*:double*:byteReader.*:guarded.*"),
    ("platform/*", "directory*:file*:interpolation*:logical*:object*:reports*:resolved*:text*:vectors*:platform*"),
]
TOKEN = re.compile(
    r'(?P<skip>//[^\n]*|/\*.*?\*/|R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"'
    r"|'(?:\\.|[^'\\\n])+'|^[ \t]*\#[ \t]*include[^\n]*|[A-Za-z_]\w*)"
    r"|(?P<number>0[xX][0-9a-fA-F']+[uUlLzZ]*"
    r"|(?:\d[\d']*\.?[\d']*|\.\d[\d']*)(?:[eE][-+]?\d+)?[uUlLzZfF]*)", re.S | re.M)
INTEGER_PARTS = re.compile(r"(0[xX])?([0-9a-fA-F']+)([uUlLzZ]*)$")
TABLE_ROW = re.compile(r"[\s\d.,{}+\-eE]*\d[\s\d.,{}+\-eE]*$")


class Change:
    """One number of one file and what is put in its place."""

    def __init__(self, file, text, start, end, new):
        self.file, self.start, self.end = file, start, end
        self.old, self.new = text[start:end], new
        begin = text.rfind("\n", 0, start) + 1
        stop = text.find("\n", start)
        self.line = text[begin:stop if stop >= 0 else len(text)].strip()
        self.row = text.count("\n", 0, start) + 1
        self.column = start - begin + 1
        self.key = ""

    def __str__(self):
        return f"{self.file}:{self.row}:{self.column}: {self.old} -> {self.new}  | {self.line}"


def isFloating(number):
    return not number.lower().startswith("0x") and re.search(r"[.eE]", number) is not None


def lastDigitChanged(number):
    if isFloating(number):
        at = re.match(r"[\d'.]*\d", number).end() - 1
        return number[:at] + ("8" if number[at] == "9" else str(int(number[at]) + 1)) + number[at + 1:]
    parts = INTEGER_PARTS.match(number)
    digits = parts.group(2).replace("'", "")
    if parts.group(1):
        return f"0x{int(digits, 16) + 1:X}{parts.group(3)}"
    octal = len(digits) > 1 and digits.startswith("0")
    return (f"0{int(digits, 8) + 1:o}" if octal else str(int(digits) + 1)) + parts.group(3)


def rowDecimals(line):
    return max((len(decimals) for decimals in re.findall(r"\.(\d+)", line)), default=0)


def codeChanges(file, text):
    changes = []
    for token in TOKEN.finditer(text):
        if token.group("number") is None:
            continue
        start, end = token.span("number")
        number = token.group("number")
        stop = text.find("\n", start)
        line = text[text.rfind("\n", 0, start) + 1:stop if stop >= 0 else len(text)]
        code = re.sub(r"//.*", "", line)
        new = lastDigitChanged(number)
        if number == "0" and TABLE_ROW.match(code) is not None and "," in code:
            if rowDecimals(code):
                new = "0." + "0" * (rowDecimals(code) - 1) + "1"
            elif file.endswith("density_filter_tables.cpp"):
                new = "0.000001"
        changes.append(Change(file, text, start, end, new))
    return changes


def allChanges(root):
    files = sorted(path for folder in FOLDERS for path in (root / folder).iterdir() if path.suffix in (".cpp", ".h"))
    changes = []
    for path in files:
        file = path.relative_to(root).as_posix()
        text = path.read_text()
        digest = hashlib.sha256(text.encode()).hexdigest()[:12]
        for change in codeChanges(file, text):
            change.key = f"{file}:{change.start}:{digest}:{change.new}"
            changes.append(change)
    return changes


class Explanations:
    """The reasons for the survivors."""

    def __init__(self, path):
        self.entries = set()
        why = ""
        for text in path.read_text().splitlines():
            if text.startswith("why: "):
                why = text
            elif text.strip() and not text.startswith("#"):
                if not why:
                    sys.exit(f"{path.name}: no reason for: {text}")
                self.entries.add(text.strip())

    def of(self, change):
        entry = f"{change.file} {change.old} | {change.line}"
        return entry if entry in self.entries else None


def limits(seconds=600):
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_BYTES, MEMORY_BYTES))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))


def run(command, **more):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                          stdin=subprocess.DEVNULL, **more)


def must(command):
    result = run(command)
    if result.returncode != 0:
        sys.exit(f"{shlex.join(map(str, command))}\n{result.stdout}")
    return result.stdout


class Workshop:
    """The copy of the tree, its tests as objects, and the kernel as a shared library under them.

    A program is linked with libfirst.so and libkernel.so. The latter is the kernel; the former is empty, or holds what a
    change has touched: found first, it replaces this part of the kernel, and only it is compiled for a change.
    """

    def __init__(self, folder, jobs):
        self.folder, self.jobs = folder, jobs
        self.source, self.build, self.base = folder / "source", folder / "tests", folder / "base"

    def copyTree(self):
        names = must(["git", "-C", str(ROOT), "ls-files", "-co", "--exclude-standard", "-z"]).split("\0")
        wanted = {name for name in names if name and (ROOT / name).is_file()}
        for path in [path for path in self.source.rglob("*") if path.is_file()] if self.source.exists() else []:
            if path.relative_to(self.source).as_posix() not in wanted:
                path.unlink()
        for name in wanted:
            target = self.source / name
            content = (ROOT / name).read_bytes()
            if not target.exists() or target.read_bytes() != content:
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_bytes(content)
                shutil.copymode(ROOT / name, target)

    def buildTests(self):
        configure = ["cmake", "-S", str(self.source), "-B", str(self.build), "-DCMAKE_BUILD_TYPE=Debug",
                     "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -w -fvisibility-inlines-hidden", "-DQXCMS_WARNINGS_AS_ERRORS=OFF"]
        if shutil.which("ccache"):
            configure.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        must(configure)
        must(["cmake", "--build", str(self.build), "--parallel", str(self.jobs), "--target", *TARGETS])

    def readCommands(self):
        """The compiler, the kernel's sources and the flags that each is compiled with."""
        self.flags = {}
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            file = pathlib.Path(entry["file"]).relative_to(self.source).as_posix()
            if str(pathlib.PurePosixPath(file).parent) not in FOLDERS:
                continue
            words = shlex.split(entry["command"])
            words = words[1:] if words[0].endswith("ccache") else words
            self.compiler = words[0]
            skip = {words.index("-o"), words.index("-o") + 1, words.index("-c"), words.index("-c") + 1}
            self.flags[file] = [word for at, word in enumerate(words) if at > 0 and at not in skip
                                and not word.startswith(("-fvisibility", "-O", "-W"))] + ["-O0", "-w", "-fPIC"]

    def compileLibraryHeaders(self):
        """The standard headers, compiled once: most of the time of a change would go into reading them."""
        names = sorted({name for folder in FOLDERS for path in (self.source / folder).iterdir() if path.is_file()
                        for name in re.findall(r"^#include <(\w+)>", path.read_text(), re.M)})
        header = self.base / "standard.h"
        header.write_text("".join(f"#include <{name}>\n" for name in names))
        flags = self.flags["base/number_text.cpp"]
        must([self.compiler, *flags, "-x", "c++-header", str(header), "-o", str(header) + ".gch"])
        for file in self.flags:
            self.flags[file] = ["-include", str(header), *self.flags[file]]

    def compileKernel(self):
        """The base: the kernel's library, an empty first one and the test programs."""
        for name in ("bin", "lib", "objects"):
            (self.base / name).mkdir(parents=True, exist_ok=True)
        self.includedBy = {}
        self.compileLibraryHeaders()

        def one(file):
            made = self.base / "objects" / (file.replace("/", "_") + ".o")
            depends = made.with_suffix(".d")
            must([self.compiler, *self.flags[file], "-MMD", "-MF", str(depends), "-c", str(self.source / file), "-o", str(made)])
            return file, made, re.sub(r"\\\n", " ", depends.read_text()).split()

        objects = []
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            for file, made, depends in pool.map(one, sorted(self.flags)):
                objects.append(str(made))
                for name in depends:
                    path = os.path.normpath(name)
                    if path.startswith(str(self.source) + "/"):
                        self.includedBy.setdefault(os.path.relpath(path, self.source), []).append(file)
        lib = self.base / "lib"
        must([self.compiler, "-shared", "-o", str(lib / "libkernel.so"), *objects, "-ldl"])
        empty = self.base / "empty.cpp"
        empty.write_text("")
        must([self.compiler, "-shared", "-fPIC", "-o", str(lib / "libfirst.so"), str(empty)])

        self.tables = {}
        for file in TABLES:
            table = lib / "table.so"
            must([self.compiler, *self.flags[file], "-shared", str(self.source / file), "-o", str(table)])
            self.tables[file] = table.read_bytes()
            table.unlink()

        def objectsOf(target):
            return sorted(str(path) for path in self.build.rglob(f"{target}.dir/**/*.o"))

        for name in TARGETS:
            must([self.compiler, "-o", str(self.base / "bin" / name), *objectsOf(name), "-L" + str(lib), "-Wl,--no-as-needed",
                  "-lfirst", "-lkernel", "-Wl,--as-needed", "-lgmock", "-lgtest", "-ldl", "-lpthread", "-Wl,-rpath,$ORIGIN/../lib"])
        for generator in self.build.glob("bin/generate_*"):
            link = self.base / "bin" / generator.name
            link.unlink(missing_ok=True)
            link.symlink_to(generator)
        shutil.copytree(self.build / "share", self.base / "share", dirs_exist_ok=True)

    def prepare(self):
        self.copyTree()
        self.buildTests()
        self.readCommands()
        self.compileKernel()


def firstSuites(file):
    return next((suites for pattern, suites in SUITES if fnmatch.fnmatch(file, pattern)), None)


def usedSeconds():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


class Worker:
    """A place of its own for one change at a time."""

    def __init__(self, shop, number):
        self.shop = shop
        self.place = shop.folder / f"worker{number}"
        shutil.rmtree(self.place, ignore_errors=True)
        shutil.copytree(shop.base, self.place, symlinks=True, ignore=shutil.ignore_patterns("objects"))

    def ask(self, program, pattern, seconds):
        """Code and output of the tests, with that much of the processor; the code is None when they do not end."""
        call = [str(self.place / "bin" / program), "--gtest_fail_fast", "--gtest_brief=1", "--gtest_filter=" + pattern]
        with subprocess.Popen(call, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL, text=True,
                              errors="replace", preexec_fn=lambda: limits(seconds), env={**os.environ, "LC_ALL": "C"},
                              cwd=self.place, start_new_session=True) as process:
            try:
                output, _ = process.communicate(timeout=WAITING)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                return None, process.communicate()[0]
        return None if process.returncode == -signal.SIGKILL else process.returncode, output

    def test(self, program, pattern, usual):
        """None, or what noticed."""
        code, output = self.ask(program, usual.patternOf(program, pattern), usual.secondsOf(program, pattern))
        if code == 0:
            return None
        failed = re.search(r"\[  FAILED  \] ([\w./]+)", output)
        return failed.group(1) if failed else f"{program} " + ("does not end" if code is None else f"ends with {code}")

    def tableChanged(self, change, text):
        """A change of a long table, made in the compiled table: False when it is not found there exactly once."""
        begin, end = text.rfind("= {", 0, change.start), text.find("};", change.start)
        entries = [other for other in codeChanges(change.file, text) if begin < other.start < end]
        values = [float(("-" if text[other.start - 1] == "-" else "") + other.old) for other in entries]
        at = [other.start for other in entries].index(change.start)
        whole = struct.pack(f"<{len(values)}d", *values)
        image = self.shop.tables[change.file]
        if begin < 0 or end < 0 or len(values) < 10 or image.count(whole) != 1:
            return False
        place = image.index(whole) + 8 * at
        new = struct.pack("<d", math.copysign(float(change.new), values[at]))
        (self.place / "lib" / "libfirst.so").write_bytes(image[:place] + new + image[place + 8:])
        return True

    def changedLibrary(self, change):
        """Compiles what a change touches; False when the compiler refuses it."""
        text = (self.shop.source / change.file).read_text()
        if change.file in self.shop.tables and self.tableChanged(change, text):
            return True
        changed = self.place / "changed" / change.file
        shutil.rmtree(self.place / "changed", ignore_errors=True)
        changed.parent.mkdir(parents=True)
        changed.write_text(text[:change.start] + change.new + text[change.end:])
        library = self.place / "lib" / "libfirst.so"
        if change.file in self.shop.flags:
            return run([self.shop.compiler, *self.shop.flags[change.file], "-shared", str(changed), "-o", str(library)],
                       preexec_fn=limits).returncode == 0
        objects = []
        for file in self.shop.includedBy.get(change.file, []):
            made = self.place / "changed" / (file.replace("/", "_") + ".o")
            compiled = run([self.shop.compiler, "-I" + str(self.place / "changed"), *self.shop.flags[file], "-c",
                            str(self.shop.source / file), "-o", str(made)], preexec_fn=limits)
            if compiled.returncode != 0:
                return False
            objects.append(str(made))
        must([self.shop.compiler, "-shared", "-o", str(library), *objects, "-ldl"])
        return True

    def tryCode(self, change, usual, suites):
        """With the matching suites alone, or with everything."""
        if not self.changedLibrary(change):
            return "compiler", ""
        for program, pattern in [("qxcms_tests", suites)] if suites else [(name, "*") for name in TARGETS]:
            noticed = self.test(program, pattern, usual)
            if noticed:
                return "test", noticed
        return "survivor", ""


class Usual:
    """How the programs behave on the unchanged kernel."""

    def __init__(self, worker, suites):
        """What fails without a change is left out: nothing, in a tree that is well."""
        self.without = dict.fromkeys(TARGETS, "-" + UNASKED)
        self.seconds = {}
        for program in TARGETS:
            code, output = worker.ask(program, "*-" + UNASKED, 600)
            while code != 0:
                failed = re.search(r"\[  FAILED  \] ([\w.]+\.[\w/]+)", output)
                if not failed:
                    sys.exit(f"{program} does not run on the unchanged kernel:\n{output[-2000:]}")
                print(f"left out, fails without a change: {program} {failed.group(1)}", flush=True)
                self.without[program] += ":" + failed.group(1)
                code, output = worker.ask(program, "*" + self.without[program], 600)
        for program in TARGETS:
            for pattern in ["*", *suites]:
                began = usedSeconds()
                worker.ask(program, self.patternOf(program, pattern), 600)
                self.seconds[program, pattern] = usedSeconds() - began

    def patternOf(self, program, suites):
        return suites + self.without[program]

    def secondsOf(self, program, suites):
        return math.ceil(TIME_FACTOR * self.seconds[program, suites] + TIME_EXTRA)


def readResults(path):
    results = {}
    if path.exists():
        for line in path.read_text().splitlines():
            fields = line.split("\t")
            if len(fields) == 3:
                results[fields[0]] = (fields[1], fields[2])
    return results


def tryAll(changes, shop, explanations, results, resultFile):
    def isOpen(change):
        outcome = results[change.key][0] if change.key in results else "unasked"
        return outcome in ("unasked", "half asked") or outcome == "survivor" and not explanations.of(change)

    if not any(isOpen(change) for change in changes):
        return
    workers = queue.Queue()
    places = [Worker(shop, number) for number in range(shop.jobs)]
    usual = Usual(places[0], sorted({firstSuites(change.file) for change in changes} - {None}))
    for place in places:
        workers.put(place)

    def askAll(asked, suitesOf):
        began = time.monotonic()

        def one(change):
            worker = workers.get()
            try:
                return change, *worker.tryCode(change, usual, suitesOf(change.file))
            finally:
                workers.put(worker)

        with concurrent.futures.ThreadPoolExecutor(shop.jobs) as pool, resultFile.open("a") as log:
            tasks = [pool.submit(one, change) for change in asked]
            for done, task in enumerate(concurrent.futures.as_completed(tasks), 1):
                change, outcome, noticed = task.result()
                if outcome == "survivor" and suitesOf(change.file):
                    outcome = "half asked"
                results[change.key] = (outcome, noticed)
                log.write(f"{change.key}\t{outcome}\t{noticed}\n")
                log.flush()
                if outcome == "survivor" and not explanations.of(change):
                    print(f"not noticed: {change}", flush=True)
                if done % 100 == 0:
                    print(f"{done} of {len(tasks)} in {time.monotonic() - began:.0f} s", flush=True)

    # First the matching suites, which notice nearly everything, then all tests for what is left.
    askAll([change for change in changes if change.key not in results and firstSuites(change.file)], firstSuites)
    askAll([change for change in changes if isOpen(change)], lambda _: None)


def judge(changes, results, explanations, whole):
    counts = {"compiler": 0, "test": 0, "explained": 0}
    bad = []
    matched = set()
    for change in changes:
        outcome = results[change.key][0]
        if outcome == "survivor":
            entry = explanations.of(change)
            if entry:
                counts["explained"] += 1
                matched.add(entry)
            else:
                bad.append(f"survivor: {change}")
        else:
            counts[outcome] += 1
    for entry in sorted(explanations.entries - matched) if whole else []:
        bad.append(f"explains nothing any more: {entry}")
    print(f"{len(changes)} changes: {counts['compiler']} caught by the compiler, {counts['test']} by tests, "
          f"{counts['explained']} explained, {len([line for line in bad if line.startswith('survivor')])} survivors")
    for line in bad:
        print(line)
    return 1 if bad else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--only", metavar="GLOB", help="only the files that fit (spectral/*_tables.cpp)")
    parser.add_argument("--list", action="store_true", help="print the changes and stop")
    parser.add_argument("--work", type=pathlib.Path, default=ROOT / "build/constants", help="the work folder")
    parser.add_argument("--jobs", type=int, default=int(os.environ.get("JOBS") or os.cpu_count()))
    options = parser.parse_args()

    def chosen(root):
        return [change for change in allChanges(root)
                if not options.only or fnmatch.fnmatch(change.file, options.only)]

    if options.list:
        print(*chosen(ROOT), sep="\n")
        return 0
    shop = Workshop(options.work.resolve(), options.jobs)
    shop.prepare()
    changes = chosen(shop.source)
    resultFile = shop.folder / "results.tsv"
    results = readResults(resultFile)
    explanations = Explanations(EXPLAINED)
    tryAll(changes, shop, explanations, results, resultFile)
    return judge(changes, results, explanations, not options.only)


if __name__ == "__main__":
    sys.exit(main())
