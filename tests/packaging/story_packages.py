"""The packages: their content, and that two builds of the same version are identical."""
import calendar
import os
import shutil
import struct
import subprocess
import tempfile
import unittest
import zipfile

from installed import GUIDES, PACKAGE, PROJECT, RELEASE, VERSION, package

PROGRAM = os.path.join(RELEASE, "odomira.exe")


def content(path):
    with open(path, "rb") as file:
        return file.read()


def version_record(path):
    """The four numbers of the file version in a program's resources."""
    data = content(path)
    # The signature also occurs in code that reads version records, but there no name precedes it.
    name = data.index("VS_VERSION_INFO".encode("utf-16-le"))
    high, low = struct.unpack_from("<II", data, data.index(struct.pack("<I", 0xFEEF04BD), name) + 8)
    return high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF


class Image:
    """The header of a PE file for 64-bit Windows."""
    def __init__(self, path):
        self.data = content(path)
        start, = struct.unpack_from("<I", self.data, 0x3C)
        self.machine, sections = struct.unpack_from("<HH", self.data, start + 4)
        optional_size, = struct.unpack_from("<H", self.data, start + 20)
        self.optional = start + 24
        self.characteristics, = struct.unpack_from("<H", self.data, self.optional + 70)
        table = self.optional + optional_size
        self.sections = [struct.unpack_from("<IIII", self.data, table + 40 * i + 8) for i in range(sections)]

    def directory(self, number):
        """Address and size of a data directory."""
        return struct.unpack_from("<II", self.data, self.optional + 112 + 8 * number)

    def offset(self, address):
        for size, start, _, offset in self.sections:
            if start <= address < start + size:
                return address - start + offset
        raise ValueError(hex(address))

    def libraries(self):
        """The names of the imported DLLs, in lower case."""
        names = []
        entry = self.offset(self.directory(1)[0])
        while name := struct.unpack_from("<I", self.data, entry + 12)[0]:
            at = self.offset(name)
            names.append(self.data[at:self.data.index(b"\0", at)].decode().lower())
            entry += 20
        return names


# Windows loads these from the system folder, even if the program folder has a file of the same name. comctl32 is named
# in the manifest.
SYSTEM_DLLS = {"advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll",
               "ole32.dll", "oleaut32.dll", "shell32.dll", "user32.dll"}


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
        """Copies the files that packaging reads into a folder with another name. Their times are those of the copy."""
        checkout = os.path.join(self.folder, "another checkout")
        shutil.copytree(os.path.dirname(PACKAGE), os.path.join(checkout, "packaging"), copy_function=shutil.copy)
        os.mkdir(os.path.join(checkout, "resources"))
        shutil.copy(os.path.join(PROJECT, "resources", "odomira.ico"), os.path.join(checkout, "resources"))
        return os.path.join(checkout, "packaging", "package")

    def test_packages_do_not_depend_on_folder_time_zone_umask_or_locale(self):
        here = self.make("a", SOURCE_DATE_EPOCH="1000000000")
        elsewhere = self.make("b", umask=0o077, recipe=self.another_checkout(), SOURCE_DATE_EPOCH="1000000000",
                              TZ="Asia/Tokyo", LC_ALL="C", HOME=self.folder)
        for one, other in zip(here, elsewhere):
            self.assertEqual(content(one), content(other), os.path.basename(one))

    def test_the_program_contains_neither_folder_nor_time_of_its_build(self):
        program = content(PROGRAM)
        self.assertNotIn(PROJECT.encode(), program)
        header = struct.unpack_from("<I", program, 0x3C)[0]
        self.assertEqual(program[header:header + 4], b"PE\0\0")
        self.assertEqual(struct.unpack_from("<I", program, header + 8)[0], 0)

    def test_the_program_imports_only_system_dlls(self):
        self.assertEqual(set(Image(PROGRAM).libraries()) - SYSTEM_DLLS, set())

    def test_the_program_has_aslr_and_dep(self):
        program = Image(PROGRAM)
        self.assertEqual(program.machine, 0x8664)
        high_entropy, dynamic_base, no_execute = 0x20, 0x40, 0x100
        self.assertEqual(program.characteristics, high_entropy | dynamic_base | no_execute)
        self.assertGreater(program.directory(5)[1], 0, "without relocations it cannot move in memory")

    def test_setup_and_program_have_the_version_of_the_project(self):
        major, minor, patch = map(int, VERSION.split("."))
        setup, _ = self.make("versions")
        self.assertEqual(version_record(PROGRAM), (major, minor, 0, patch))
        self.assertEqual(version_record(setup), (major, minor, 0, patch))
        self.assertIn(f"\n## [{VERSION}] - ".encode(), content(os.path.join(PROJECT, "CHANGELOG.md")))

    def test_the_zip_contains_program_guides_and_readme_with_the_time_of_the_commit(self):
        _, path = self.make("zip", SOURCE_DATE_EPOCH="1000000000")
        with zipfile.ZipFile(path) as archive:
            self.assertEqual(archive.namelist(), ["Odomira/ReadMe.txt", *("Odomira/" + name for name in GUIDES), "Odomira/odomira.exe"])
            self.assertEqual(archive.read("Odomira/odomira.exe"), content(PROGRAM))
            for name in GUIDES:
                self.assertEqual(archive.read("Odomira/" + name), content(os.path.join(RELEASE, name)))
                self.assertIn(name.encode(), archive.read("Odomira/ReadMe.txt"))
            text = archive.read("Odomira/ReadMe.txt")
            times = {calendar.timegm((*info.date_time, 0, 0, 0)) for info in archive.infolist()}
        self.assertEqual(times, {1000000000})
        self.assertEqual(text.count(b"\n"), text.count(b"\r\n"))
        self.assertIn("Redigera - Inställningar...", text.decode("utf-8-sig"))

    def test_a_failure_leaves_no_incomplete_package(self):
        folder = os.path.join(self.folder, "failure")
        os.mkdir(folder)
        with self.assertRaises(subprocess.CalledProcessError):
            package("not a version", folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.assertEqual(os.listdir(folder), [])


if __name__ == "__main__":
    unittest.main()
