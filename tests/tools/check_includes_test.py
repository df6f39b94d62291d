"""Checks tools/check_includes.py with a copy of the program's rooms and an added line."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parents[2]
SOURCE = 'data/DayFields.cpp'


class RoomsAreKept(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.copy = pathlib.Path(folder.name)
        for room in ('app', 'data', 'forms', 'platform', 'resources', 'settings'):
            shutil.copytree(TREE / room, self.copy / room)

    def plant(self, line):
        """Appends a line to the source; returns the beginning of the expected message."""
        with (self.copy / SOURCE).open('r+', encoding='utf-8') as source:
            number = len(source.readlines()) + 1
            source.write(line + '\n')
        return f'{SOURCE}:{number}: error: '

    def check(self):
        command = [sys.executable, TREE / 'tools/check_includes.py', os.environ['ODOMIRA_ROOMS'], self.copy]
        result = subprocess.run(command, stderr=subprocess.PIPE, text=True, check=False)
        return result.returncode, result.stderr

    def test_the_program_includes_only_what_its_rooms_declare(self):
        self.assertEqual(self.check(), (0, ''))

    def test_an_include_of_a_room_above_is_found_with_its_file_and_line(self):
        place = self.plant('#include "forms/main/frmMain.h"')
        self.assertEqual(self.check(), (1, place + 'data does not use forms_main: "forms/main/frmMain.h"\n'))

    def test_an_include_of_a_room_below_that_is_not_declared_is_found(self):
        place = self.plant('  #  include "platform/print/Printer.h"')
        self.assertEqual(self.check(), (1, place + 'data does not use platform_print: "platform/print/Printer.h"\n'))

    def test_a_header_of_windows_outside_platform_is_found(self):
        place = self.plant('#include <windows.h>')
        self.assertEqual(self.check(), (1, place + 'data does not call Windows: <windows.h>\n'))

    def test_an_include_of_what_is_no_room_is_found(self):
        place = self.plant('#include "tests/support/ErrorOf.h"')
        self.assertEqual(self.check(), (1, place + '"tests/support/ErrorOf.h" belongs to no room\n'))


if __name__ == '__main__':
    unittest.main()
