#!/usr/bin/python3
"""tidy.py BUILD SOURCE...: runs clang-tidy for the sources, one process for each processor.

BUILD is a folder with compile_commands.json. The exit code is 1 if there is a finding.

clang-tidy needs half a minute or more for one source, because it reads every header again. A source without a finding is
therefore recorded in ~/.cache/odomira/tidy, under a hash of all that its result depends on. It is checked again when that
hash changes.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

TREE = pathlib.Path(__file__).resolve().parent.parent
STORE = pathlib.Path(os.environ.get('XDG_CACHE_HOME') or pathlib.Path.home() / '.cache') / 'odomira' / 'tidy'
SYSTEM_FOLDERS = re.compile(r'^ (\S*/c\+\+\S*|\S*mingw32/include)$', re.MULTILINE)


def output(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout


def compile_commands(build):
    entries = json.loads((build / 'compile_commands.json').read_text())
    return {pathlib.Path(entry['file']).resolve(): shlex.split(entry['command']) for entry in entries}


def system_headers(compiler):
    """The options that let clang read the same headers as the compiler that builds the program."""
    listing = subprocess.run([compiler, '-E', '-v', '-x', 'c++', '/dev/null'], check=True, capture_output=True, text=True)
    return ['-extra-arg=-isystem' + folder for folder in SYSTEM_FOLDERS.findall(listing.stderr)]


def fingerprint(command, rules):
    """A hash of the rules and of the source with its headers, macros and comments, independent of the path of the tree."""
    preprocess = [*command[:command.index('-o')], '-E', '-C', '-dD', command[-1]]
    return hashlib.sha256(rules + output(*preprocess).replace(bytes(TREE), b'')).hexdigest()


def is_clean(build, source, command, options, rules):
    note = STORE / fingerprint(command, rules)
    if note.exists():
        return True
    found = subprocess.run(['clang-tidy', '-p', build, '--quiet', *options, source], capture_output=True, text=True)
    print(found.stdout, end='')
    if found.returncode != 0:
        print('\n'.join(line for line in found.stderr.splitlines() if not line.endswith(' warnings generated.')))
        return False
    note.touch()
    return True


def main(build, sources):
    STORE.mkdir(parents=True, exist_ok=True)
    commands = compile_commands(build)
    paths = [pathlib.Path(source).resolve() for source in sources]
    options = system_headers(commands[paths[0]][0])
    rules = output('clang-tidy', '--version') + (TREE / '.clang-tidy').read_bytes()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        results = list(workers.map(lambda path: is_clean(build, path, commands[path], options, rules), paths))
    return 0 if all(results) else 1


if __name__ == '__main__':
    sys.exit(main(pathlib.Path(sys.argv[1]), sys.argv[2:]))
