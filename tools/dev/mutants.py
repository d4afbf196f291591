#!/usr/bin/env python3
"""Plants faults into the sources of a folder and lists those that its tests do not notice.

The sources are copied to build/mutants, so that the working tree stays as it is. All faults are
compiled in at once, each behind a switch that the environment variable ZEL_FAULT turns; those
which cannot be switched at run time (constant expressions above all) are compiled one by one.
"""

import argparse
import fcntl
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import sys
import time

import fault_sites

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCRATCH = ROOT / "build" / "mutants"
TREE = SCRATCH / "tree"
EQUIVALENT = ROOT / "tests" / "equivalent_faults.txt"
TESTS_OF = {"tools/zel": "cli", "tools/view": "view"}
MEMORY_LIMIT = 6 << 30
OTHER_SYSTEMS = ("win32",)  # files that are not compiled here


def write_if_new(path, content):
    """Leaves the time of an unchanged file alone, so that nothing is compiled for it."""
    if not path.is_file() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def copy_tree():
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT,
                            check=True, capture_output=True, text=True).stdout.split("\0")
    names = {name for name in listed if name and (ROOT / name).is_file()}
    for old in [p for p in TREE.rglob("*") if p.is_file()]:
        if str(old.relative_to(TREE)) not in names:
            old.unlink()
    for name in names:
        write_if_new(TREE / name, (ROOT / name).read_bytes())
        shutil.copymode(ROOT / name, TREE / name)


def configure(sanitized):
    """The build folder, with or without the sanitizers: some faults show in stray reads only."""
    out = SCRATCH / ("sanitized" if sanitized else "plain")
    header = TREE / "tools" / "dev" / "planted_faults.h"
    subprocess.run(
        ["cmake", "-S", TREE, "-B", out, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
         f"-DCMAKE_CXX_FLAGS=-w -include {header}", "-DCMAKE_CXX_FLAGS_RELEASE=-O1",
         "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DZEL_BUILD_EXAMPLES=OFF",
         f"-DZEL_SANITIZE={'address,undefined' if sanitized else ''}"],
        check=True, stdout=subprocess.DEVNULL)
    return out


def read_equivalents():
    """Blocks of a path, the lines before, the lines after, and the reason: {key: reason}."""
    if not EQUIVALENT.is_file():
        return {}
    blocks = re.split(r"\n\s*\n", re.sub(r"^#.*\n", "", EQUIVALENT.read_text(), flags=re.M).strip())
    equivalents = {}
    for block in filter(None, blocks):
        lines = [line.strip() for line in block.splitlines()]
        if len(lines) < 4:
            sys.exit(f"{EQUIVALENT.name}: path, before, after and reason are wanted in\n{block}")
        equivalents[tuple(lines[:3])] = " ".join(lines[3:])
    return equivalents


def compiled_lines(path, text):
    """The lines of a source that the preprocessor lets through on this system."""
    if not re.search(r"^\s*#\s*(if|else|elif)", text, re.M):
        return range(1, text.count("\n") + 2)
    done = subprocess.run([os.environ.get("CXX", "c++"), "-std=c++20", "-E", "-x", "c++", "-I", TREE,
                           path], capture_output=True, text=True, check=True)
    lines, here, line = set(), False, 0
    for row in done.stdout.splitlines():
        marker = re.match(r'# (\d+) "([^"]*)"', row)
        if marker:
            line, here = int(marker.group(1)), marker.group(2) == str(path)
        else:
            lines |= {line} if here and row.strip() else set()
            line += 1
    return lines


class Programs:
    """The test programs of a folder, built in `out`."""

    def __init__(self, folder, out, jobs):
        self.out, self.jobs = out, jobs
        tests = TESTS_OF.get(folder, folder.removeprefix("zel/"))
        listing = (TREE / "tests" / tests / "CMakeLists.txt").read_text()
        self.names = re.findall(r"zel_add_(?:fault_)?test\((\w+)", listing)
        self.folder = out / "tests" / tests
        self.seconds = {}

    def build(self):
        """The compiler's words when it fails, nothing otherwise."""
        done = subprocess.run(["ninja", "-C", self.out, "-k", "0", f"-j{self.jobs}", *self.names],
                              capture_output=True, text=True, errors="replace")
        return done.stdout + done.stderr if done.returncode else ""

    def run(self, name, fault, cpu, wall):
        def limit():
            os.setsid()
            resource.setrlimit(resource.RLIMIT_CPU, (int(cpu), int(cpu) + 1))
            if self.out.name == "plain":  # the sanitizers reserve terabytes of addresses
                resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        scratch = SCRATCH / "tmp"
        shutil.rmtree(scratch, ignore_errors=True)
        scratch.mkdir()
        program = subprocess.Popen(
            [self.folder / name, "--gtest_fail_fast", "--gtest_brief=1"], cwd=self.folder,
            env={**os.environ, "ZEL_FAULT": str(fault), "TMPDIR": str(scratch)}, preexec_fn=limit,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        try:
            words = program.communicate(timeout=wall)[0].decode(errors="replace")
        except subprocess.TimeoutExpired:
            words = "took too long"
        finally:
            try:
                os.killpg(program.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            code = program.wait()
        return code, words

    def measure(self):
        """Runs them without a fault; then they run in the order of their time."""
        for name in self.names:
            start = time.monotonic()
            code, words = self.run(name, 0, 3600, 3600)
            if code:
                sys.exit(f"{name} fails without any fault:\n{words[-2000:]}")
            self.seconds[name] = time.monotonic() - start
        self.names.sort(key=self.seconds.get)

    def notice(self, fault):
        """The test that fails, or what else happens; nothing when all pass."""
        for name in self.names:
            usual = self.seconds[name]
            code, words = self.run(name, fault, 10 + 5 * usual, 60 + 20 * usual)
            if code:
                failed = re.search(r"\[  FAILED  \] ([\w/.]+)", words)
                return failed.group(1) if failed else f"{name} ends with {code}"
        return ""


class Folder:
    """The sources of a folder and the faults that can be planted there."""

    def __init__(self, folder, seed, files):
        self.sources = {}
        for path in sorted((TREE / folder).rglob("*")):
            name = str(path.relative_to(TREE))
            if path.suffix in (".cpp", ".h") and not any(o in name for o in OTHER_SYSTEMS) and (
                    not files or any(part in name for part in files)):
                self.sources[name] = path.read_text()
        found = []
        for name, text in self.sources.items():
            lines = compiled_lines(TREE / name, text)
            found += [f for f in fault_sites.faults_of(name, text) if f.line in lines]
        self.faults = sorted(found, key=lambda fault: fault.rank(seed))

    def write(self, numbered, plain=None):
        """Writes the sources with these faults behind switches, or one of them as it is."""
        for name, text in self.sources.items():
            if plain and plain.path == name:
                text = text[:plain.begin] + plain.plain + text[plain.end:]
            else:
                text = fault_sites.switched_source(
                    text, [(n, f) for n, f in numbered.items() if f.path == name])
            write_if_new(TREE / name, text.encode())


def without_refused(numbered, words):
    """The faults on lines that the compiler does not name in its errors."""
    named = {(str(pathlib.Path(path).relative_to(TREE)), int(line)) for path, line in
             re.findall(rf"({re.escape(str(TREE))}/[^:\s]+):(\d+):\d+:\s+(?:error|required from)",
                        words)}
    left = {n: f for n, f in numbered.items()
            if not any((f.path, k) in named for k in range(f.line, f.line + 1 + len(f.before) // 60))}
    if len(left) == len(numbered):  # the errors come from elsewhere: the files that fail
        failed = {path for path in {f.path for f in numbered.values()} if path in words}
        left = {n: f for n, f in numbered.items() if f.path not in failed}
    if len(left) == len(numbered):
        sys.exit(words[-4000:])
    return left


def judge(folder, programs, faults):
    """Plants these faults one after the other: (fault, who noticed) of those that compile."""
    def answer(fault, number):
        noticed = programs.notice(number)
        print(f"{fault.path}:{fault.line}: {fault.kind} {noticed or 'SURVIVES'}", flush=True)
        return fault, noticed

    numbered = dict(enumerate(faults, 1))
    while True:
        folder.write(numbered)
        words = programs.build()
        if not words:
            break
        numbered = without_refused(numbered, words)
    if not programs.seconds:
        programs.measure()
    for number, fault in numbered.items():
        yield answer(fault, number)
    for fault in faults:
        if fault not in numbered.values():
            folder.write(numbered, fault)
            if not programs.build():
                yield answer(fault, 0)


def main():
    parser = argparse.ArgumentParser(prog="./dev mutants", description=__doc__)
    parser.add_argument("folder", help="such as geometry, or tools/zel")
    parser.add_argument("files", nargs="*", help="only sources with this in their names")
    parser.add_argument("--count", type=int, default=100, help="of faults to judge (100)")
    parser.add_argument("--seed", type=int, default=1, help="another number, other faults (1)")
    parser.add_argument("--jobs", type=int, default=2, help="of the compiler (2)")
    parser.add_argument("--survivors", action="store_true", help="only those of the last run")
    parser.add_argument("--quick", action="store_true",
                        help="leave out the second look with the sanitizers")
    options = parser.parse_args()
    name = options.folder.strip("/")
    name = name if "/" in name else f"zel/{name}"

    SCRATCH.mkdir(parents=True, exist_ok=True)
    lock = (SCRATCH / "lock").open("w")
    fcntl.flock(lock, fcntl.LOCK_EX)  # one run at a time has the copy
    copy_tree()
    folder = Folder(name, options.seed, options.files)
    programs = Programs(name, configure(sanitized=False), options.jobs)
    equivalents = read_equivalents()
    keys = {fault.key for fault in folder.faults}
    for key in equivalents:
        if key[0] in folder.sources and key not in keys:
            print("names no fault that can be planted:", *key, sep="\n  ")
    left = [fault for fault in folder.faults if fault.key not in equivalents]
    log = SCRATCH / (name.replace("/", "_") + "_survivors.txt")
    if options.survivors:
        wanted = log.read_text()
        left = [fault for fault in left if "\n".join(fault.key) in wanted]
    judged, alive, tried = 0, [], 0
    while left and judged < options.count:
        batch, left = left[:options.count - judged], left[options.count - judged:]
        answers = list(judge(folder, programs, batch))
        judged += len(answers)
        alive += [fault for fault, noticed in answers if not noticed]
        tried += len(batch)
    if alive and not options.quick:
        sanitized = Programs(name, configure(sanitized=True), options.jobs)
        alive = [fault for fault, noticed in judge(folder, sanitized, alive) if not noticed]
    folder.write({})
    log.write_text("\n\n".join("\n".join(fault.key) for fault in alive) + "\n")
    for fault in sorted(alive, key=lambda f: (f.path, f.begin)):
        print(f"\n{fault.path}:{fault.line}: {fault.kind}\n  {fault.before}\n  {fault.after}")
    drawn = folder.faults[:folder.faults.index(left[0])] if left else folder.faults
    counted_out = sum(fault.key in equivalents for fault in drawn)
    print(f"\n{name}: {judged} faults, {judged - len(alive)} noticed, {len(alive)} not "
          f"({100 * (judged - len(alive)) // max(judged, 1)} %); {tried - judged} did not "
          f"compile; {counted_out} named as equivalent")
    return 1 if 10 * len(alive) > judged else 0


if __name__ == "__main__":
    sys.exit(main())
