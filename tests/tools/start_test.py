"""Checks how tools/start.py prepares the folder in which ./run installs the program."""
import os
import pathlib
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(__file__).resolve().parents[2] / 'tools'
sys.path.insert(0, str(TOOLS))
import start  # noqa: E402


class FirstStart(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        start.RUN_FOLDER = folder.name
        start.PREFIX = os.path.join(folder.name, 'wine')
        start.FOLDER = os.path.join(start.PREFIX, 'drive_c', 'Odomira')
        start.COMPLETE = os.path.join(start.PREFIX, 'complete')
        self.addCleanup(lambda: start.end_wine(start.users_environment()))

    def test_an_interrupted_first_start_is_repeated_and_a_renamed_journal_folder_is_kept(self):
        remains = os.path.join(start.PREFIX, 'drive_c', 'remains')
        os.makedirs(remains)
        start.prepare_wine()
        self.assertTrue(os.path.exists(os.path.join(start.PREFIX, 'user.reg')))
        self.assertFalse(os.path.exists(remains))

        put_aside = start.FOLDER + '-2026'
        os.rename(start.FOLDER, put_aside)
        start.prepare_wine()
        self.assertTrue(os.path.isdir(put_aside))
        self.assertTrue(os.path.isdir(start.FOLDER))


if __name__ == '__main__':
    unittest.main()
