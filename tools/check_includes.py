#!/usr/bin/python3
"""check_includes.py ROOMS [TREE]: checks that every room includes only headers of the rooms that it declares.

ROOMS is the rooms.txt that CMake writes into the build folder; TREE is the top of the source tree, by default
the current folder. Wrong includes are printed with file and line; then the exit code is 1.
"""
import pathlib
import re
import sys
from dataclasses import dataclass

INCLUDE = re.compile(r'\s*#\s*include\s*(?:"(?P<own>[^"]+)"|<(?P<system>[^>]+)>)')


@dataclass(frozen=True)
class Room:
    name: str
    folder: pathlib.PurePosixPath
    calls_windows: bool
    sources: frozenset
    uses: frozenset


def read_rooms(path):
    """Reads the rooms that odomira_uses (cmake/Room.cmake) has written."""
    rooms = []
    for line in path.read_text().splitlines():
        name, folder, windows, sources, uses = line.split('|')
        rooms.append(Room(name, pathlib.PurePosixPath(folder), windows == 'yes', frozenset(sources.split()),
                          frozenset(uses.split())))
    return rooms


def owners(rooms, tree):
    """The room of every header and source in the folders of the rooms, by its path in the tree.

    If rooms share a folder, a header belongs to the room with the source of the same name.
    """
    owner = {}
    for room in rooms:
        sharing = [other for other in rooms if other.folder == room.folder]
        sources = {pathlib.PurePath(source).stem for source in room.sources}
        for file in (tree / room.folder).glob('*'):
            if file.suffix in ('.h', '.cpp') and (len(sharing) == 1 or file.stem in sources):
                owner[str(room.folder / file.name)] = room
    return owner


def fault_of(room, include, owner):
    """The error message for an include in a source of the room, or None."""
    if include['system']:
        # The headers of the C++ library have no extension.
        if include['system'].endswith('.h') and not room.calls_windows:
            return f'{room.name} does not call Windows: <{include["system"]}>'
        return None
    other = owner.get(include['own'])
    if other is None:
        return f'"{include["own"]}" belongs to no room'
    if other is not room and other.name not in room.uses:
        return f'{room.name} does not use {other.name}: "{include["own"]}"'
    return None


def faults(rooms, tree):
    owner = owners(rooms, tree)
    for path, room in sorted(owner.items()):
        for number, line in enumerate((tree / path).read_text(encoding='utf-8').splitlines(), 1):
            include = INCLUDE.match(line)
            fault = include and fault_of(room, include, owner)
            if fault:
                yield f'{path}:{number}: error: {fault}'


def main():
    rooms = read_rooms(pathlib.Path(sys.argv[1]))
    found = list(faults(rooms, pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else '.')))
    print(*found, sep='\n', end='\n' if found else '', file=sys.stderr)
    return 1 if found else 0


if __name__ == '__main__':
    sys.exit(main())
