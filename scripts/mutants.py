#!/usr/bin/python3
"""mutants.py WORKERS COUNT SEED [FILE...]: changes readers, writers and values in small ways and passes their tests.
mutants.py --programs [FILE...]: prints the names of the test programs.

Without a FILE it is about all of them.

The script mutants.sh prepares what this needs: build/mutants/tests with the test programs, and for each worker a copy
of the sources in build/mutants/<number> with a library of its own in build/. Neither is the work tree.
"""

import collections
import concurrent.futures
import difflib
import hashlib
import os
import pathlib
import queue
import random
import re
import resource
import signal
import subprocess
import sys

import mutations

LEAST_CAUGHT = 95.0
PROCESSOR_TIME = 60 # seconds for a test program, which takes a few
HANG = 300 # seconds after which one that waits is taken for hanging, however busy the machine is

# The C library's own check of what is given back: a byte written past the end stops the program.
CHECKED_MEMORY = {"LD_PRELOAD": "libc_malloc_debug.so.0", "MALLOC_CHECK_": "3"}

FOLDER = pathlib.Path("build/mutants")
ACCEPTED = pathlib.Path("scripts/mutants-accepted.txt")
ENTRY = re.compile(r'^(\S+)\n- (.*)\n\+ (.*)\n((?:    .*\n)+)', re.MULTILINE)

CONFIGURATION_TESTS = ["Nereo2ConfigFileTest", "FileTest", "TypicalRunTest"]
CONTROL_TESTS = ["ControlFileTextTest", "ControlFileTest", "FileTest", "TypicalRunTest"]
GEOMETRY_TESTS = ["GbiFileTest", "FileTest", "TypicalRunTest"]
MATERIAL_TESTS = ["MaterialDatabaseFileXmlTest", "MaterialDatabaseFileTest", "FileTest", "TypicalRunTest"]
INSPECTION_TESTS = ["inspection/ConfigurationCheckTest", "inspection/CheckTest",
                    "inspection/ConfigurationAgreementTest"]
CONTROL_CHECKS = ["inspection/ControlFileCheckTest", "inspection/CaseCheckTest", "inspection/FindingsPageTest",
                  "inspection/ControlFileAgreementTest"]
GEOMETRY_CHECKS = ["inspection/GeometryBoundaryInspectionTest", "inspection/FindingsPageTest"]
MATERIAL_CHECKS = ["inspection/MaterialDatabaseInspectionTest", "inspection/FindingsPageTest"]
RESULTS_CHECKS = ["inspection/ResultsCheckTest", "inspection/FindingsPageTest", "inspection/ResultsAgreementTest"]
COMPARISON_TESTS = ["inspection/ComparisonTest", "inspection/ResultsComparisonTest", "inspection/InspectionFaultTest"]
EDIT_TESTS = ["inspection/EditTest", "inspection/RandomEditTest"]
RESULTS_TESTS = ["ResultsFileReaderTest", "ResultsFileTest", "FileTest"]
WHOLE_SAVE_TESTS = ["WholeSaveTest", "faults/WholeSaveFaultTest", "faults/FullDiskTest"]

# Of all questions about files; short ones, which whatever is left passes in the end.
QUICK_CHECKS = [f"inspection/{name}" for name in (
    "CheckTest", "FindingsPageTest", "NoFalseAlarmTest", "RulesTest", "FileKindTest", "InspectionFaultTest",
    "CaseCheckTest", "ComparisonTest", "EditTest")]

# The readers, the writers, what they share and the values, each with its test programs, its own first.
TESTS = {
    "FileIO/Nereo2ConfigFileXmlReader.cpp": ["Nereo2ConfigFileXmlTest", *CONFIGURATION_TESTS],
    "FileIO/Nereo2ConfigFileXmlWriter.cpp": ["Nereo2ConfigFileXmlTest", *CONFIGURATION_TESTS],
    "FileIO/Nereo2ConfigFileTextReader.cpp": ["Nereo2ConfigFileTextTest", *CONFIGURATION_TESTS],
    "FileIO/Nereo2ConfigFileTextWriter.cpp": ["Nereo2ConfigFileTextTest", *CONFIGURATION_TESTS],
    "FileIO/Nereo2ConfigFile.cpp": CONFIGURATION_TESTS,
    "FileIO/CodeNameTable.cpp": ["CodeNameTableTest", "BoundaryConditionTest", "MaterialTypesTest", "ThreadsTest"],
    "FileIO/ControlFileTextReader.cpp": CONTROL_TESTS,
    "FileIO/ControlFileTextWriter.cpp": CONTROL_TESTS,
    "FileIO/ControlFileRecords.h": CONTROL_TESTS,
    "FileIO/ControlFileSections.h": CONTROL_TESTS,
    "FileIO/ControlFile.cpp": [*CONTROL_TESTS, "MovingTest"],
    "FileIO/GbiFileTextWriter.cpp": GEOMETRY_TESTS,
    "FileIO/GbiFile.cpp": [*GEOMETRY_TESTS, "MovingTest"],
    "FileIO/TextBlock.cpp": GEOMETRY_TESTS,
    "FileIO/MaterialDatabaseFileXmlReader.cpp": MATERIAL_TESTS,
    "FileIO/MaterialDatabaseFileXmlWriter.cpp": MATERIAL_TESTS,
    "FileIO/MaterialReferenceValues.h": MATERIAL_TESTS,
    "FileIO/MaterialDatabaseFile.cpp": [*MATERIAL_TESTS, "MovingTest"],
    "FileIO/ExactText.cpp": [*CONTROL_TESTS, *MATERIAL_TESTS, "GbiFileTest"],
    "FileIO/Setting.cpp": ["SettingTest", "MovingTest", *CONFIGURATION_TESTS],
    "FileIO/Flag.cpp": ["ControlFileTest", "MovingTest"],
    "FileIO/BoundaryCondition.cpp": ["BoundaryConditionTest", "MovingTest", *GEOMETRY_TESTS],
    "FileIO/Point.cpp": ["MaterialTest"],
    "FileIO/MaterialProperty.cpp": ["MaterialTest", "MovingTest", *MATERIAL_TESTS],
    "FileIO/Material.cpp": ["MaterialTest", "MovingTest", *MATERIAL_TESTS, *CONTROL_TESTS, *GEOMETRY_TESTS],
    "FileIO/MaterialType.cpp": ["MaterialTypesTest", "TranslationTest", "MaterialTest", "ThreadsTest"],
    "FileIO/PropertyType.cpp": ["MaterialTypesTest", "TranslationTest", "MaterialTest", "ThreadsTest"],
    "FileIO/VariationType.cpp": ["MaterialTypesTest", "TranslationTest", "MaterialTest", "ThreadsTest"],
    "FileIO/DisplayNames.cpp": ["MaterialTypesTest", "TranslationTest", "ThreadsTest"],
    "FileIO/XmlTokens.h": ["Nereo2ConfigFileXmlTest", *MATERIAL_TESTS],
    "FileIO/EntityLimit.cpp": ["XmlEntitiesTest"],
    "FileIO/NumberText.cpp": ["NumberTextTest", *CONTROL_TESTS, *MATERIAL_TESTS],
    "FileIO/ResultsFileReader.cpp": RESULTS_TESTS,
    "FileIO/ResultsFile.cpp": [*RESULTS_TESTS, "ResultsFileLoadTest", "MovingTest"],
    "FileIO/FieldStatistics.cpp": ["ResultsScanTest"],
    "FileIO/ExactSum.cpp": ["ResultsScanTest"],
    "FileIO/SumOfSquares.cpp": ["ResultsScanTest"],
    "FileIO/NodeMarks.cpp": ["ResultsScanTest"],
    "FileIO/ResultsFileWalk.cpp": [*RESULTS_TESTS, "ResultsFileHeaderTest", "ResultsFileLoadTest"],
    "FileIO/ResultsFileHeaderReader.cpp": ["ResultsFileHeaderTest", "ResultsFileLoadTest"],
    "FileIO/ResultsFileHeader.cpp": ["ResultsFileHeaderTest", "ResultsFileLoadTest"],
    "FileIO/ResultsFileLoad.cpp": ["ResultsFileLoadTest"],
    "FileIO/ResultsDevice.cpp": ["ResultsFileHeaderTest", "ResultsFileLoadTest"],
    "FileIO/ResultsProgressMeter.cpp": ["ResultsFileLoadTest"],
    "FileIO/ResultsFileScan.cpp": ["ResultsScanTest"],
    "FileIO/ResultsScan.cpp": ["ResultsScanTest"],
    "FileIO/ResultsSession.cpp": ["ResultsScanTest", "ResultsFileLoadTest"],
    "FileIO/NodeRecordTransposer.cpp": RESULTS_TESTS,
    "FileIO/File.cpp": ["FileTest", "WholeSaveTest"],
    "FileIO/FileAccess.h": ["FileTest", "faults/SystemCallFaultTest", "faults/AllocationFaultTest",
                            "Nereo2ConfigFileXmlTest", "XmlEntitiesTest", "Nereo2ConfigFileTextTest",
                            *CONTROL_TESTS, *GEOMETRY_TESTS, *MATERIAL_TESTS, *RESULTS_TESTS],
    "FileIO/WholeSave.cpp": WHOLE_SAVE_TESTS,
    "FileIO/UnixFileReplacement.cpp": WHOLE_SAVE_TESTS,
    "FileIO/ConfigurationForms.h": [*CONFIGURATION_TESTS, *INSPECTION_TESTS],
    "Inspection/CaseCheck.cpp": ["inspection/CaseCheckTest", "inspection/FindingsPageTest"],
    "Inspection/Check.cpp": ["inspection/CheckTest", "inspection/InspectionFaultTest"],
    "Inspection/Comparison.cpp": COMPARISON_TESTS,
    "Inspection/ComparisonReport.cpp": COMPARISON_TESTS,
    "Inspection/ConfigurationTextOutline.cpp": INSPECTION_TESTS,
    "Inspection/ConfigurationValues.cpp": INSPECTION_TESTS,
    "Inspection/ConfigurationXmlOutline.cpp": INSPECTION_TESTS,
    "Inspection/ControlFileLines.cpp": CONTROL_CHECKS,
    "Inspection/ControlFileMaterials.cpp": CONTROL_CHECKS,
    "Inspection/ControlFileOutline.cpp": CONTROL_CHECKS,
    "Inspection/ControlFileValues.cpp": CONTROL_CHECKS,
    "Inspection/ConfigurationTextEdit.cpp": EDIT_TESTS,
    "Inspection/ConfigurationXmlEdit.cpp": EDIT_TESTS,
    "Inspection/ControlFileEdit.cpp": EDIT_TESTS,
    "Inspection/EditStep.cpp": EDIT_TESTS,
    "Inspection/EditedFile.cpp": EDIT_TESTS,
    "Inspection/FieldComparison.cpp": COMPARISON_TESTS,
    "Inspection/FieldList.cpp": COMPARISON_TESTS,
    "Inspection/FileEdit.cpp": [*EDIT_TESTS, "inspection/InspectionFaultTest"],
    "Inspection/FileEncoding.cpp": [*EDIT_TESTS, *INSPECTION_TESTS, *MATERIAL_CHECKS],
    "Inspection/FileKind.cpp": ["inspection/FileKindTest"],
    "Inspection/FreeMemory.cpp": COMPARISON_TESTS,
    "Inspection/Finding.cpp": ["inspection/CheckTest"],
    "Inspection/FreeMemory.cpp": ["inspection/InspectionFaultTest", "inspection/ResultsComparisonTest"],
    "Inspection/GeometryBoundaryOutline.cpp": GEOMETRY_CHECKS,
    "Inspection/InputFile.cpp": ["inspection/CheckTest", "inspection/InspectionFaultTest"],
    "Inspection/Json.cpp": ["inspection/CheckTest"],
    "Inspection/LateMaterialNames.cpp": [*MATERIAL_CHECKS, *COMPARISON_TESTS],
    "Inspection/Listener.cpp": INSPECTION_TESTS,
    "Inspection/MaterialDatabaseOutline.cpp": MATERIAL_CHECKS,
    "Inspection/MaterialNames.cpp": MATERIAL_CHECKS,
    "Inspection/KindEditor.cpp": EDIT_TESTS,
    "Inspection/MaterialDatabaseEdit.cpp": EDIT_TESTS,
    "Inspection/NearestName.cpp": ["inspection/RulesTest", *INSPECTION_TESTS],
    "Inspection/OneLine.cpp": ["inspection/CheckTest", "inspection/ComparisonTest"],
    "Inspection/NewTexts.cpp": EDIT_TESTS,
    "Inspection/NumberFault.cpp": ["inspection/RulesTest", *INSPECTION_TESTS],
    "Inspection/OrderedRecords.cpp": COMPARISON_TESTS,
    "Inspection/Origins.cpp": ["inspection/EditTest"],
    "Inspection/Outline.cpp": ["inspection/CheckTest"],
    "Inspection/RecordStream.cpp": COMPARISON_TESTS,
    "Inspection/ResultsComparison.cpp": COMPARISON_TESTS,
    "Inspection/ResultsOutline.cpp": RESULTS_CHECKS,
    "Inspection/ResultsRecords.cpp": RESULTS_CHECKS,
    "Inspection/ResultsPair.cpp": COMPARISON_TESTS,
    "Inspection/Rule.cpp": ["inspection/RulesTest", "inspection/CheckTest"],
    "Inspection/ScatteredRecords.cpp": COMPARISON_TESTS,
    "Inspection/SeenNames.cpp": ["inspection/SeenNamesTest"],
    "Inspection/TextFile.cpp": ["inspection/TextPlacesTest", "inspection/InspectionFaultTest", *INSPECTION_TESTS],
    "Inspection/TextLines.cpp": EDIT_TESTS,
    "Inspection/TextPlaces.cpp": ["inspection/TextPlacesTest", *INSPECTION_TESTS],
    "Inspection/ValueComparison.cpp": COMPARISON_TESTS,
    "Inspection/ValueTable.cpp": COMPARISON_TESTS,
    "Inspection/VariableNames.cpp": ["inspection/ResultsCheckTest", *GEOMETRY_CHECKS, *MATERIAL_CHECKS],
    "Inspection/VersionFault.cpp": INSPECTION_TESTS,
    "Inspection/Walker.cpp": ["inspection/CheckTest", "inspection/FindingsPageTest"],
    "Inspection/XmlMarkup.cpp": EDIT_TESTS,
    "Inspection/XmlFile.cpp": ["inspection/InspectionFaultTest", *INSPECTION_TESTS],
}

# What is changed, and the folders in which it is built.
LIBRARIES = {"NereoFileIO": "FileIO", "NereoInspection": "Inspection"}

# In these nobody could notice a change here.
UNTRIED = {
    "FileIO/FieldMemory.cpp", # decides on speed only
    "FileIO/QtFileReplacement.cpp", # for systems other than Unix
}

# Skipped is what doesn't compile, or compiles to the same library as before.
RESULTS = CAUGHT, SURVIVED, EQUIVALENT, SKIPPED = "caught", "survived", "equivalent", "skipped"


class Worker:
    """A library that can be changed, and the tests that are run with it."""

    def __init__(self, number, programs):
        self.root = FOLDER / str(number)
        self.original = self.build()
        if self.original is None:
            sys.exit(f"{self.root}: the library doesn't build")
        for program in programs:
            if not self.passes(program):
                sys.exit(f"{program} fails without any change")

    def judge(self, file, mutation):
        source = self.root / file
        text = source.read_text(encoding="utf-8")
        source.write_text(mutation.apply(text), encoding="utf-8")
        try:
            library = self.build()
            if library in (None, self.original):
                return SKIPPED
            return SURVIVED if all(self.passes(program) for program in tests_of(file)) else CAUGHT
        finally:
            source.write_text(text, encoding="utf-8")

    def build(self):
        """A sum of the library's bytes, or None when it doesn't compile."""
        build = self.root / "build"
        if subprocess.run(["ninja", "-C", build, *LIBRARIES], capture_output=True, check=False).returncode != 0:
            return None
        return hashlib.sha256(b"".join((build / LIBRARIES[name] / f"lib{name}.so").read_bytes()
                                       for name in LIBRARIES)).digest()

    def passes(self, program):
        libraries = ":".join(str((self.root / "build" / name).resolve()) for name in ("FileIO", "Inspection", "Utility"))
        environment = {**os.environ, **CHECKED_MEMORY, "LD_LIBRARY_PATH": libraries}
        tests = subprocess.Popen(["prlimit", f"--cpu={PROCESSOR_TIME}", (FOLDER / "tests/tests" / program).resolve(),
                                  "--gtest_brief=1", "--gtest_fail_fast"],
                                 cwd=FOLDER / "tests/tests", env=environment, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL, start_new_session=True)
        try:
            return tests.wait(HANG) == 0
        except subprocess.TimeoutExpired:
            return False
        finally:
            kill_group(tests)


def limit_resources():
    """Holds for the programs that are started, too: a change may make a loop that never ends."""
    resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
    resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 30, 1 << 30))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def kill_group(process):
    """Ends a program with what a death test may have left behind."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


class Candidates:
    """The mutations of a file in the order of trial, and what came of them."""

    def __init__(self, file, seed, accepted):
        self.file = file
        self.accepted = accepted
        self.text = pathlib.Path(file).read_text(encoding="utf-8")
        self.rest = self._shuffled(random.Random(f"{seed} {file}"))
        self.results = collections.Counter()
        self.survivors = []

    def _shuffled(self, chance):
        """Every kind of mutation gets its turn, however many there are of it."""
        kinds = collections.defaultdict(list)
        for mutation in mutations.mutations(self.text):
            kinds[mutation.kind].append(mutation)
        for choices in kinds.values():
            chance.shuffle(choices)
        order = []
        while kinds:
            kind = chance.choice(sorted(kinds))
            order.append(kinds[kind].pop())
            if not kinds[kind]:
                del kinds[kind]
        return order

    def judged(self):
        return self.results[CAUGHT] + self.results[SURVIVED]

    def judge(self, worker, count):
        """Tries so many that make a difference, if there are."""
        while count > 0 and self.rest:
            mutation = self.rest.pop(0)
            result = worker.judge(self.file, mutation)
            before, after = mutation.lines(self.text)
            reason = self.accepted.reason(self.file, before, after) if result == SURVIVED else None
            if result == SURVIVED:
                self.survivors.append((mutation, reason))
            if reason:
                result = EQUIVALENT
            self.results[result] += 1
            if result == SKIPPED:
                continue
            print(f"{result:10} {self.file}: {before}  ->  {after}", flush=True)
            count -= result != EQUIVALENT


def share(count, shares):
    """Splits a number into equal shares, the first of which may be larger by one."""
    return [count // shares + (index < count % shares) for index in range(shares)]


def judge_all(candidates, workers, count):
    """Tries the mutations evenly over the files. What a small file lacks comes from the others."""
    idle = queue.SimpleQueue()
    for worker in workers:
        idle.put(worker)

    def judge(candidate, quota):
        worker = idle.get()
        candidate.judge(worker, quota)
        idle.put(worker)

    with concurrent.futures.ThreadPoolExecutor(len(workers)) as pool:
        while (able := [candidate for candidate in candidates if candidate.rest]):
            missing = count - sum(candidate.judged() for candidate in candidates)
            if missing == 0:
                break
            list(pool.map(judge, able, share(missing, len(able))))


class Accepted:
    """The changes that can't be noticed, with the reason. In what a line becomes, "…" stands for any text."""

    def __init__(self, path):
        self.entries = [(file, before, re.compile(re.escape(after).replace("…", ".*")), " ".join(reason.split()))
                        for file, before, after, reason in ENTRY.findall(path.read_text(encoding="utf-8"))]

    def reason(self, file, before, after):
        return next((reason for entry_file, entry_before, pattern, reason in self.entries
                     if (entry_file, entry_before) == (file, before) and pattern.fullmatch(after)), None)


def report(candidates):
    """Prints what came of the mutations, and gives whether enough of them were caught."""
    print()
    for candidate in candidates:
        for mutation, reason in candidate.survivors:
            lines = (text.splitlines(keepends=True) for text in (candidate.text, mutation.apply(candidate.text)))
            print(*difflib.unified_diff(*lines, candidate.file, candidate.file, n=1), sep="", end="")
            print(f"    {'equivalent: ' + reason if reason else 'SURVIVED'}\n")

    total = sum((candidate.results for candidate in candidates), collections.Counter())
    print(f"{'':42}", *(f"{result:>10}" for result in RESULTS))
    for name, results in [*((candidate.file, candidate.results) for candidate in candidates), ("all", total)]:
        print(f"{name:42}", *(f"{results[result]:10}" for result in RESULTS))
    percent = 100.0 * total[CAUGHT] / max(total[CAUGHT] + total[SURVIVED], 1)
    print(f"\n{percent:.1f} % of what isn't equivalent were caught")
    return percent >= LEAST_CAUGHT


def tests_of(file):
    return list(dict.fromkeys([*TESTS[file], *(QUICK_CHECKS if file.startswith("Inspection/") else [])]))


def programs_of(files):
    return sorted({program for file in files or TESTS for program in tests_of(file)})


def sources_without_tests():
    sources = {str(path) for folder in LIBRARIES.values() for path in pathlib.Path(folder).glob("*.cpp")}
    return sorted(sources - TESTS.keys() - UNTRIED)


def main(workers, count, seed, *files):
    if (forgotten := sources_without_tests()):
        sys.exit(f"No tests are known here of {', '.join(forgotten)}")
    limit_resources()
    accepted = Accepted(ACCEPTED)
    candidates = [Candidates(file, seed, accepted) for file in files or TESTS]
    with concurrent.futures.ThreadPoolExecutor() as pool:
        workers = list(pool.map(lambda number: Worker(number, programs_of(files)), range(1, int(workers) + 1)))
    judge_all(candidates, workers, int(count))
    return report(candidates)


if __name__ == "__main__":
    if sys.argv[1] == "--programs":
        print(*(pathlib.PurePath(program).name for program in programs_of(sys.argv[2:])))
    else:
        sys.exit(0 if main(*sys.argv[1:]) else 1)
