"""The files that are handed out: what is in them, and that the same program always gives the same bytes."""
import calendar
import os
import shutil
import struct
import subprocess
import tempfile
import unittest
import zipfile

from installed import PACKAGE, PROJECT, RELEASE, VERSION, package

PROGRAM = os.path.join(RELEASE, "odomira.exe")


def content(path):
    with open(path, "rb") as file:
        return file.read()


def version_record(path):
    """The four numbers of the file version in a program's resources."""
    data = content(path)
    high, low = struct.unpack_from("<II", data, data.index(struct.pack("<I", 0xFEEF04BD)) + 8)
    return high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF


class Packages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def make(self, name, umask=0o022, recipe=PACKAGE, **variables):
        folder = os.path.join(self.folder, name)
        os.mkdir(folder)
        return package(VERSION, folder, recipe, umask=umask, env=dict(os.environ, **variables))

    def another_checkout(self):
        """What packaging needs, in a folder of another name, with files that are as old as this test."""
        checkout = os.path.join(self.folder, "another checkout")
        shutil.copytree(os.path.dirname(PACKAGE), os.path.join(checkout, "packaging"), copy_function=shutil.copy)
        os.mkdir(os.path.join(checkout, "resources"))
        shutil.copy(os.path.join(PROJECT, "resources", "odomira.ico"), os.path.join(checkout, "resources"))
        return os.path.join(checkout, "packaging", "package")

    def test_the_same_program_gives_the_same_bytes_wherever_and_whenever(self):
        here = self.make("a", SOURCE_DATE_EPOCH="1000000000")
        elsewhere = self.make("b", umask=0o077, recipe=self.another_checkout(), SOURCE_DATE_EPOCH="1000000000",
                              TZ="Asia/Tokyo", LC_ALL="C", HOME=self.folder)
        for one, other in zip(here, elsewhere):
            self.assertEqual(content(one), content(other), os.path.basename(one))

    def test_the_program_tells_neither_folder_nor_time_of_its_build(self):
        program = content(PROGRAM)
        self.assertNotIn(PROJECT.encode(), program)
        header = struct.unpack_from("<I", program, 0x3C)[0]
        self.assertEqual(program[header:header + 4], b"PE\0\0")
        self.assertEqual(struct.unpack_from("<I", program, header + 8)[0], 0)

    def test_setup_and_program_bear_the_version_of_the_project(self):
        major, minor, patch = map(int, VERSION.split("."))
        setup, _ = self.make("versions")
        self.assertEqual(version_record(PROGRAM), (major, minor, 0, patch))
        self.assertEqual(version_record(setup), (major, minor, 0, patch))

    def test_the_zip_holds_the_program_and_what_to_know_at_the_time_of_the_commit(self):
        _, path = self.make("zip", SOURCE_DATE_EPOCH="1000000000")
        with zipfile.ZipFile(path) as archive:
            self.assertEqual(archive.namelist(), ["Odomira/ReadMe.txt", "Odomira/odomira.exe"])
            self.assertEqual(archive.read("Odomira/odomira.exe"), content(PROGRAM))
            text = archive.read("Odomira/ReadMe.txt")
            times = {calendar.timegm((*info.date_time, 0, 0, 0)) for info in archive.infolist()}
        self.assertEqual(times, {1000000000})
        self.assertEqual(text.count(b"\n"), text.count(b"\r\n"))
        self.assertIn("Inställningarna", text.decode("utf-8-sig"))

    def test_a_failure_leaves_no_half_package(self):
        folder = os.path.join(self.folder, "failure")
        os.mkdir(folder)
        with self.assertRaises(subprocess.CalledProcessError):
            package("not a version", folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.assertEqual(os.listdir(folder), [])


if __name__ == "__main__":
    unittest.main()
