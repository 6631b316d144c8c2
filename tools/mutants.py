#!/usr/bin/env python3
"""Mutation testing of the portable engines against the native test suite.

A fixed-seed sample of single-token mutants of the portable sources (the
QV_PORTABLE_SOURCES of every sources.cmake): relational, equality, logical
and arithmetic operator swaps and off-by-one integer constants.  Each mutant
is rebuilt in a quick native configuration (no sanitizers, no debug
information: only the mutated object is recompiled, and the native tests,
linked into one program, relinked) and the tests run with a timeout.  A mutant is killed when a test fails, survives when every
test passes, and is counted apart when it does not compile.

    nice -n 15 tools/mutants.py [--seed 10] [--count 150] [--list]

The work happens in a copy of the tracked files under build/mutants/, so the
working tree is never touched.  Survivors are listed at the end;
build/mutants/results.json also names, for each killed mutant, the tests that
failed (none when the program crashed), which shows the tests no mutant
needs.
"""
import argparse
import json
import os
import random
import re
import shutil
import subprocess
import sys
import time

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), '..'))
WORK = os.path.join(ROOT, 'build', 'mutants')
SRC = os.path.join(WORK, 'src')
BUILD = os.path.join(WORK, 'build')

# Operator swaps; binary operators only where written with a blank on each
# side (the project's style), so template brackets, includes, ++ and -> are
# left alone.
SWAPS = {'<': '<=', '<=': '<', '>': '>=', '>=': '>', '==': '!=', '!=': '==',
         '&&': '||', '||': '&&', '+': '-', '-': '+', '*': '/', '/': '*'}
OPERATOR = re.compile(r'(?<= )(<=|>=|==|!=|&&|\|\||<|>|\+|-|\*|/)(?= )')
NUMBER = re.compile(r'(?<![\w.])(\d+)(?![\w.])')


def portable_sources():
    files = []
    for entry in sorted(os.listdir(ROOT)):
        cm = os.path.join(ROOT, entry, 'sources.cmake')
        if not os.path.isfile(cm):
            continue
        for m in re.finditer(r'list\(APPEND QV_PORTABLE_SOURCES([^)]*)\)', open(cm).read()):
            files += m.group(1).split()
    return files


def code_mask(text):
    """The text with comments, string and character literals blanked."""
    out = list(text)
    i, n = 0, len(text)
    while i < n:
        c = text[i]
        if text.startswith('//', i):
            j = text.find('\n', i)
            j = n if j < 0 else j
        elif text.startswith('/*', i):
            j = text.find('*/', i + 2)
            j = n if j < 0 else j + 2
        elif c in '"\'':
            j = i + 1
            while j < n and text[j] != c:
                j += 2 if text[j] == '\\' else 1
            j += 1
        else:
            i += 1
            continue
        for k in range(i, min(j, n)):
            if out[k] != '\n':
                out[k] = ' '
        i = j
    return ''.join(out)


def candidates(path):
    text = open(os.path.join(ROOT, path)).read()
    masked = code_mask(text)
    found = []
    offset = 0
    for line in masked.splitlines(keepends=True):
        if not line.lstrip().startswith('#') and 'static_assert' not in line:
            for m in OPERATOR.finditer(line):
                found.append((path, offset + m.start(), m.group(1), SWAPS[m.group(1)]))
            for m in NUMBER.finditer(line):
                value = int(m.group(1))
                found.append((path, offset + m.start(), m.group(1), str(value + 1)))
        offset += len(line)
    return found


def run(cmd, timeout, cwd=BUILD):
    try:
        return subprocess.run(cmd, cwd=cwd, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=timeout).returncode
    except subprocess.TimeoutExpired:
        return -1


def run_tests(timeout):
    """The native tests' exit code and the names of the tests that failed
    (none listed when the program crashed or timed out)."""
    try:
        done = subprocess.run([os.path.join(BUILD, 'tests', 'native', 'native_all'), '--gtest_brief=1'],
                              cwd=BUILD, capture_output=True, text=True, errors='replace', timeout=timeout)
    except subprocess.TimeoutExpired:
        return -1, []
    failed = sorted(set(re.findall(r'^\[  FAILED  \] (\w+\.\w+)', done.stdout, re.M)))
    return done.returncode, failed


def prepare():
    files = subprocess.run(['git', 'ls-files'], cwd=ROOT, capture_output=True, text=True,
                           check=True).stdout.split()
    shutil.rmtree(SRC, ignore_errors=True)
    for f in files:
        dst = os.path.join(SRC, f)
        os.makedirs(os.path.dirname(dst), exist_ok=True)
        shutil.copy2(os.path.join(ROOT, f), dst)
    # An earlier run leaves its last mutant linked into the program (only
    # the object is put back), and an interrupted one a mutated object:
    # the portable sources, newer than any object, are compiled afresh.
    for f in portable_sources():
        os.utime(os.path.join(SRC, f), None)
    os.makedirs(BUILD, exist_ok=True)
    env = dict(os.environ, CC='clang', CXX='clang++')
    subprocess.run(['cmake', '-S', SRC, '-B', BUILD, '-DQV_QUICK=ON', '-DCMAKE_BUILD_TYPE=None',
                    '-DCMAKE_CXX_FLAGS=-O1'], env=env, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(['cmake', '--build', BUILD, '-j2'], check=True, stdout=subprocess.DEVNULL)
    if run(['ctest', '--timeout', '20'], 600) != 0:
        sys.exit('the unmutated suite fails: nothing to measure')


def object_of(path):
    return os.path.join(BUILD, 'CMakeFiles', 'qvnative_test.dir', path + '.o')


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument('--seed', type=int, default=10)
    ap.add_argument('--count', type=int, default=150)
    ap.add_argument('--list', action='store_true', help='print the sample, build nothing')
    args = ap.parse_args()

    pool = [c for f in portable_sources() for c in candidates(f)]
    sample = random.Random(args.seed).sample(pool, min(args.count, len(pool)))
    sample.sort()
    if args.list:
        for path, pos, old, new in sample:
            line = open(os.path.join(ROOT, path)).read().count('\n', 0, pos) + 1
            print(f'{path}:{line}: {old} -> {new}')
        return

    prepare()
    results = {'killed': [], 'survived': [], 'not compiling': [], 'killed by': {}}
    started = time.time()
    for i, (path, pos, old, new) in enumerate(sample, 1):
        src = os.path.join(SRC, path)
        original = open(src).read()
        obj = object_of(path)
        saved = open(obj, 'rb').read()
        line = original.count('\n', 0, pos) + 1
        open(src, 'w').write(original[:pos] + new + original[pos + len(old):])
        if run(['cmake', '--build', BUILD, '--target', 'native_all'], 300) != 0:
            outcome = 'not compiling'
        else:
            code, failed = run_tests(60)
            outcome = 'killed' if code != 0 else 'survived'
            if failed:
                results['killed by'][f'{path}:{line}: {old} -> {new}'] = failed
        # Back to the original source and object, the object newer, so the
        # next mutant recompiles only its own file.
        open(src, 'w').write(original)
        open(obj, 'wb').write(saved)
        now = time.time()
        os.utime(src, (now - 60, now - 60))
        results[outcome].append(f'{path}:{line}: {old} -> {new}')
        print(f'[{i}/{len(sample)}] {outcome:13} {path}:{line}: {old} -> {new}', flush=True)
    killed, survived = len(results['killed']), len(results['survived'])
    print(f'\nseed {args.seed}, {len(sample)} mutants, {time.time() - started:.0f} s')
    print(f"killed {killed}, survived {survived}, not compiling {len(results['not compiling'])}")
    if killed + survived:
        print(f'score {100 * killed / (killed + survived):.1f}% of the compiling mutants')
    print('survivors:')
    for s in results['survived']:
        print('  ' + s)
    with open(os.path.join(WORK, 'results.json'), 'w') as f:
        json.dump(results, f, indent=1)


if __name__ == '__main__':
    main()
