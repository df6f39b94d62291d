"""Checks that the files, tests and entries that the pages for developers name exist."""
import pathlib
import re
import unittest

TREE = pathlib.Path(__file__).resolve().parents[2]
KEPT = 'docs/kept-on-purpose.md'
PAGES = ('README.md', 'CONTRIBUTING.md', 'docs/architecture.md', 'docs/packaging.md', 'docs/performance.md', KEPT,
         'tools/machine/README.md')
LINK = re.compile(r'\]\((?!https?:)([^)#]+)')
PATH = re.compile(r'`((?:\.ci|app|benchmark|cmake|data|docs|forms|packaging|platform|resources|settings|tests|tools)'
                  r'/[\w./-]*)[^`]*`')
PROGRAM = re.compile(r'build/debug/(tests/\S+)/(\w+)_test\.exe')
GTEST_NAME = re.compile(r'`([A-Z]\w+\.[A-Z]\w+)`')
GTEST = re.compile(r'^TEST(?:_F|_P)?\((\w+), (\w+)\)', re.MULTILINE)
REFERENCE = re.compile(r'Kept on purpose: "([^"\n]*)"')


def read(path):
    return (TREE / path).read_text(encoding='utf-8')


def sources(endings, *folders):
    """The texts of the files with these endings in the folders, by their paths."""
    return {str(path): path.read_text(encoding='utf-8')
            for folder in folders for path in (TREE / folder).rglob('*') if path.suffix in endings}


def missing_files(page, text):
    links = [(TREE / page).parent / link for link in LINK.findall(text)]
    paths = [TREE / path for path in PATH.findall(text)]
    return [str(path) for path in links + paths if not path.exists()]


def missing_programs(text):
    return [program for folder, program in PROGRAM.findall(text)
            if f'odomira_test({program}\n' not in read(f'{folder}/CMakeLists.txt')]


class DocumentsTest(unittest.TestCase):
    def test_every_file_that_a_page_names_exists(self):
        for page in PAGES:
            self.assertEqual(missing_files(page, read(page)), [], page)
        self.assertNotEqual(missing_files(KEPT, '[a page](gone.md)'), [])
        self.assertNotEqual(missing_files(KEPT, '`tests/gone`'), [])

    def test_every_test_program_that_a_page_runs_exists(self):
        for page in PAGES:
            self.assertEqual(missing_programs(read(page)), [], page)
        self.assertEqual(missing_programs('build/debug/tests/data/gone_test.exe'), ['gone'])

    def test_every_test_that_keeps_an_oddity_exists(self):
        tests = {'.'.join(name) for text in sources({'.cpp'}, 'tests').values() for name in GTEST.findall(text)}
        named = set(GTEST_NAME.findall(read(KEPT)))
        self.assertGreater(len(named), 50)
        self.assertEqual(named - tests, set())

    def test_code_and_page_have_the_same_entries(self):
        entries = set(re.findall(r'^### (.+)$', read(KEPT), re.MULTILINE))
        code = sources({'.cpp', '.h', '.rc'}, 'app', 'data', 'forms', 'platform', 'resources', 'settings')
        self.assertEqual({entry for text in code.values() for entry in REFERENCE.findall(text)}, entries)
        broken = [path for path, text in code.items() if text.count('Kept on purpose') != len(REFERENCE.findall(text))]
        self.assertEqual(broken, [], 'a reference must be on one line')


if __name__ == '__main__':
    unittest.main()
