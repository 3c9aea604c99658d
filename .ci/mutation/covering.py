# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
"""Which tests run a line: only those can notice a fault in it."""
import collections
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile

HERE = pathlib.Path(__file__).resolve().parent


class Covering:
    """A build that counts, and what each test ran there."""

    def __init__(self, tree, build, programs):
        self.tree, self.build, self.told = tree, build, build / "told"
        self.programs = programs
        self.lines = {}  # of a file: {program: {test: set of lines}}
        self.known = {}  # what a file of counts says, by its content

    def measure(self, key):
        """Builds and runs all, unless that was done to its end for the same key."""
        done = self.build / "counted of"
        is_done = done.exists() and done.read_text() == key
        if not is_done:
            done.unlink(missing_ok=True)
            self.make()
        self.find_counts()
        if not is_done:
            shutil.rmtree(self.told, ignore_errors=True)
            running = [self.start(program) for program in self.programs]
            ends = [process.wait() for process in running]
            if max(ends) <= 1 and min(ends) >= 0:  # a test may fail, no program may die
                done.write_text(key)

    def make(self):
        subprocess.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja",
                        "-DCMAKE_BUILD_TYPE=Debug",
                        f"-DCMAKE_CXX_FLAGS_DEBUG=-O0 --coverage -fprofile-filter-files={self.tree}/src/.*",
                        "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DOVSEARCH_BENCH=OFF",
                        f"-DCMAKE_PROJECT_INCLUDE={HERE / 'each_test.cmake'}"],
                       check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["ninja", "-C", self.build, *self.programs], check=True,
                       stdout=subprocess.DEVNULL)

    def find_counts(self):
        self.counts = {}
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            source = pathlib.Path(entry["directory"], entry["file"]).resolve()
            if self.tree in source.parents:
                output = re.search(r" -o (\S+)\.o ", entry["command"])[1]
                self.counts[str(source.relative_to(self.tree))] = output + ".gcda"

    def start(self, program):
        (self.told / program).mkdir(parents=True, exist_ok=True)
        (self.told / program).chmod(0o777)  # some tests give their rights away
        strip = len(self.build.resolve().parts) - 1
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8",
                           OV_COVERAGE=str(self.told / program), GCOV_PREFIX_STRIP=str(strip),
                           GCOV_PREFIX=str(self.told / program / "outside of tests"))
        return subprocess.Popen([self.build / "bin" / program, "--gtest_brief=1"], env=environment,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                stdin=subprocess.DEVNULL)

    def tests_of(self, path, number):
        """{program: tests} that run the line, else any line of its file (a table, what is computed
        when it is compiled); nothing when that is not known."""
        if path not in self.counts:
            return None
        if path not in self.lines:
            self.lines[path] = self.read(path)
        of_line = {p: {t for t, lines in tests.items() if number in lines}
                   for p, tests in self.lines[path].items()}
        of_file = {p: {t for t, lines in tests.items() if lines}
                   for p, tests in self.lines[path].items()}
        return of_line if any(of_line.values()) else of_file if any(of_file.values()) else None

    def read(self, path):
        found = collections.defaultdict(dict)
        with tempfile.TemporaryDirectory() as folder:
            place = pathlib.Path(folder, pathlib.PurePath(self.counts[path]).name)
            shutil.copy(self.build / self.counts[path].replace(".gcda", ".gcno"), folder)
            for program in self.programs:
                for test in os.listdir(self.told / program):
                    counts = self.told / program / test / self.counts[path]
                    if test != "outside of tests" and counts.exists():
                        found[program][test.replace("%", "/")] = self.lines_run(path, counts, place)
        return found

    def lines_run(self, path, counts, place):
        content = counts.read_bytes()
        key = path, hashlib.sha1(content).digest()
        if key not in self.known:
            place.write_bytes(content)
            told = subprocess.run(["gcov", "--json-format", "--stdout", place], capture_output=True)
            # What a program wrote that was killed meanwhile cannot be read.
            files = json.loads(told.stdout)["files"] if told.returncode == 0 else []
            self.known[key] = {line["line_number"] for file in files
                               if file["file"].endswith(path) for line in file["lines"] if line["count"]}
        return self.known[key]
