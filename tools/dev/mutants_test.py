#!/usr/bin/env python3
"""The check of ./dev mutants itself."""

import os
import pathlib
import subprocess
import tempfile
import unittest

import fault_sites

HERE = pathlib.Path(__file__).resolve().parent
SAMPLE = """
extern "C" int printf(const char*, ...);
constexpr double kScale = 0.25;
struct Counter {
  int hits = 2;
  void hit(int by) { hits += by; }
};
bool between(int low, int x, int high) { return low <= x && x < high; }
int main() {
  Counter counter;
  counter.hit(3);
  if (!between(0, counter.hits, 5) || counter.hits == 7) {
    counter.hits = -counter.hits * 2 - 1;
  }
  const double scaled = counter.hits / 2.0 + kScale * (7 % 4);
  bool is_odd = (counter.hits & 1) != 0;
  const char* word = is_odd ? "odd && 1 < 2" : "even";  // 1 + 1
  printf("%d %g %s %d", counter.hits, scaled, word, true);
}
"""


def changes(line):
    return {(fault.before, fault.after) for fault in fault_sites.faults_of("a.cpp", line)}


class FaultSites(unittest.TestCase):
    def test_lines_and_their_faults(self):
        for line, *after in (
                ["// a + b", ],
                ['#define X (1 + 2)'],
                ['s("1 + 1", R"(2 < 3)", \'0\');', ";"],
                ["static_assert(sizeof(int) == 4);"],
                ["float corners[3][2];"],
                ["std::vector<int> list;"],
                ["const int f(int a, float* b);"],
                ["x = a < b;", ";", "x = a <= b;"],
                ["x += -y;", ";", "x -= -y;", "x += y;"],
                ["throw kBad;", ";"],
                ["return a && b;", "return true && b;", "return a && true;"],
                ["int x = 0x10 + 0;", "int x = 17 + 0;", "int x = 0x10 - 0;", "int x = 0x10 + 1;"],
                ["if (f()) {}", "if (true) {}", "if (false) {}"],
                ["for (; i < n; ++i) {}", "for (; i <= n; ++i) {}"],
                ["const float x = 1.5e-3F;", "const float x = 0.003F;"]):
            with self.subTest(line):
                self.assertEqual(changes(line), {(line, wrong) for wrong in after})

    def test_keys_and_order_outlive_edits_elsewhere(self):
        def ranked(source):
            faults = fault_sites.faults_of("a.cpp", source)
            return [f.key for f in sorted(faults, key=lambda f: f.rank(1))]
        edited = "int added;\n" + SAMPLE
        self.assertEqual(ranked(edited), ranked(SAMPLE))
        self.assertEqual(len(set(ranked(SAMPLE))), len(ranked(SAMPLE)))

    def test_switched_fault_does_what_the_plain_one_does(self):
        with tempfile.TemporaryDirectory() as folder:
            def program(name, source):
                path = pathlib.Path(folder) / name
                path.with_suffix(".cpp").write_text(source)
                done = subprocess.run(
                    [os.environ.get("CXX", "c++"), "-std=c++20", "-w", "-include",
                     HERE / "planted_faults.h", path.with_suffix(".cpp"), "-o", path],
                    capture_output=True, text=True)
                return path if done.returncode == 0 else None

            def output(path, fault):
                return subprocess.run([path], capture_output=True, check=True,
                                      env={**os.environ, "ZEL_FAULT": str(fault)}).stdout

            faults = [f for f in fault_sites.faults_of("a.cpp", SAMPLE) if "constexpr" not in f.before]
            switched = program("switched", fault_sites.switched_source(
                SAMPLE, list(enumerate(faults, 1))))
            right = program("right", SAMPLE)
            self.assertEqual(output(switched, 0), output(right, 0))
            kinds = {}
            for number, fault in enumerate(faults, 1):
                kinds.setdefault((fault.kind, fault.switched[0][2]), (number, fault))
            differ = 0
            for number, fault in kinds.values():
                plain = program("plain", SAMPLE[:fault.begin] + fault.plain + SAMPLE[fault.end:])
                with self.subTest(fault.after):
                    self.assertEqual(output(switched, number), output(plain, 0))
                    differ += output(plain, 0) != output(right, 0)
            self.assertGreater(differ, len(kinds) // 2)


if __name__ == "__main__":
    unittest.main()
