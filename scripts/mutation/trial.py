"""Runs tests against one mutant at a time."""

import collections
import json
import os
import re
import resource
import subprocess
import tempfile
import threading
import time
from concurrent.futures import ThreadPoolExecutor

STAGES = (10, 40, 160)  # how many tests are tried at a time, the most telling ones first
BEGUN = re.compile(r"^\[ RUN      \] (\S+)", re.M)


class Test:
    """One test of a Google Test program."""

    def __init__(self, entry, name, alone):
        self.name = name
        self.program = entry["command"][0]
        properties = {p["name"]: p["value"] for p in entry["properties"]}
        self.folder = properties.get("WORKING_DIRECTORY")
        self.environment = dict(v.split("=", 1) for v in properties.get("ENVIRONMENT", []))
        for change in properties.get("ENVIRONMENT_MODIFICATION", []):
            variable, _, value = change.partition("=set:")
            self.environment[variable] = value
        # Tests of one key may share a process.
        self.key = (self.program, name if alone else "")
        self.seconds = 0.0
        self.reached = frozenset()

    @property
    def suite(self):
        return self.name.rsplit(".", 1)[0]


def tests_of_suite(entry, suite):
    """The tests that a filter of CTest's, `Suite.*`, picks."""
    listed = subprocess.run([entry["command"][0], f"--gtest_filter={suite}", "--gtest_list_tests"],
                            check=True, capture_output=True, text=True).stdout
    name = ""
    for line in listed.splitlines():
        word = line.split("#")[0].strip()
        if line.startswith("  "):
            yield Test(entry, name + word, False)
        else:
            name = word


def all_tests(build):
    listed = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"], check=True,
                            capture_output=True, text=True).stdout
    tests = []
    for entry in json.loads(listed)["tests"]:
        command = entry.get("command", [])
        picked = next((a.split("=", 1)[1] for a in command if "gtest_filter" in a), None)
        if not picked or not os.access(command[0], os.X_OK):
            continue
        tests += tests_of_suite(entry, picked) if picked.endswith("*") else [Test(entry, picked, True)]
    return tests


def limited(seconds):
    """For a child: an endless loop or an endless list ends by itself."""
    def limit():
        resource.setrlimit(resource.RLIMIT_CPU, (int(seconds), int(seconds) + 1))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_DATA, (6 << 30, 6 << 30))
        os.setsid()
    return limit


def first_failure(tests, variables, cpu_seconds):
    """Runs tests of one key in one process: the name of the one that fails first, or None."""
    environment = {**os.environ, **tests[0].environment, **variables}
    environment["GTEST_FILTER"] = ":".join(t.name for t in tests)
    with tempfile.TemporaryFile() as output:
        child = subprocess.Popen([tests[0].program, "--gtest_fail_fast", "--gtest_color=no"],
                                 cwd=tests[0].folder, env=environment, stdin=subprocess.DEVNULL,
                                 stdout=output, stderr=subprocess.DEVNULL,
                                 preexec_fn=limited(cpu_seconds))
        try:
            status = child.wait(timeout=cpu_seconds * 5 + 10)
        except subprocess.TimeoutExpired:
            os.killpg(child.pid, 9)  # the group that it leads
            status = child.wait()
        if status == 0:
            return None
        output.seek(0)
        begun = BEGUN.findall(output.read().decode(errors="replace"))
        return failed_of(begun, tests)


def failed_of(begun, tests):
    """With fail-fast the last test that began is the one that failed."""
    names = {t.name for t in tests}
    return next((name for name in reversed(begun) if name in names), tests[0].name)


def limit_for(tests):
    return sum(t.seconds for t in tests) * 4 + 5


class Trial:
    """`seconds`: how long the tests of one mutant may take before it counts as surviving."""

    def __init__(self, build, count, jobs, seconds):
        self.count = count
        self.seconds = seconds
        self.pool = ThreadPoolExecutor(jobs)
        self.tests = all_tests(build)
        self.killers = collections.defaultdict(collections.Counter)  # of each file
        self.lock = threading.Lock()

    def reach(self):
        """Learns which tests pass, how long they take and which mutants each of them reaches."""
        self.tests = [t for t in self.pool.map(self.reach_of, self.tests) if t is not None]
        programs = collections.defaultdict(list)
        for test in self.tests:
            programs[test.key].append(test)
        shared = [tests for tests in programs.values() if len(tests) > 1]
        for tests, failed in zip(shared, self.pool.map(lambda t: first_failure(t, {}, 600), shared)):
            for test in tests if failed else []:
                test.key = (test.program, test.suite)
        self.by_mutant = [[] for _ in range(self.count)]
        for test in self.tests:
            for number in test.reached:
                self.by_mutant[number].append(test)

    def reach_of(self, test):
        with tempfile.NamedTemporaryFile() as file:
            file.truncate(max(self.count, 1))
            begin = time.monotonic()
            failed = first_failure([test], {"ZANTO_MUTANT_REACHED": file.name}, 120)
            test.seconds = time.monotonic() - begin
            test.reached = frozenset(i for i, byte in enumerate(file.read()) if byte)
        if failed:
            print(f"mutants: left out, fails without a mutant: {test.name}", flush=True)
        return None if failed else test

    def in_order(self, mutant):
        """The tests that reach a mutant: first what killed others of its file, then those that
        reach little, and so say most."""
        with self.lock:
            killers = dict(self.killers[mutant.file].most_common(6))
        return sorted(self.by_mutant[mutant.number],
                      key=lambda t: (-killers.get(t.name, 0), len(t.reached), t.seconds))

    def killer(self, mutant):
        """The name of the test that fails with a mutant, or None."""
        left = self.seconds
        for group in self.groups(self.in_order(mutant)):
            if left <= 0:
                return None
            left -= sum(t.seconds for t in group)
            failed = self.failing(group, mutant)
            if failed:
                with self.lock:
                    self.killers[mutant.file][failed] += 1
                return failed
        return None

    def groups(self, tests):
        """What runs together, in the order in which it is tried."""
        ends = [*STAGES, len(tests)]
        for begin, end in zip((0, *STAGES), ends):
            together = collections.defaultdict(list)
            for test in tests[begin:end]:
                together[test.key].append(test)
            yield from together.values()

    def failing(self, group, mutant):
        variables = {"ZANTO_MUTANT": str(mutant.number)}
        failed = first_failure(group, variables, limit_for(group))
        if failed is None or len(group) == 1:
            return failed
        # In company a test may fail for its neighbours: what kills a mutant does so alone.
        for test in sorted(group, key=lambda t: t.name != failed):
            if first_failure([test], variables, limit_for([test])):
                return test.name
        return None

    def judge(self, mutants, told):
        """Tries all mutants; `told` hears of each as it ends."""
        def one(mutant):
            killer = self.killer(mutant)
            told(mutant, killer)
            return killer
        return list(self.pool.map(one, mutants))
