#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes the Windows installer of PeloraADS.DLL on Linux, with msitools (Debian packages wixl and msitools).

The same module, registration and time (tools/source_date.sh) give the same bytes: the package's identifier is
made from its content, the product's from its version.

The environment variable PELORA_SIGN holds the command that signs a file, which is its last argument; it is run for
the module, before that is packed, and for the finished installer.
"""
import argparse
import hashlib
import os
import pathlib
import shlex
import shutil
import struct
import subprocess
import sys
import tempfile
import uuid

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCE = ROOT / "packages" / "windows" / "pelora.wxs"
ICON = ROOT / "src" / "resources" / "object.ico"
LICENCE = ROOT / "LICENSE"
# Where identifiers of ours are made from names.
NAMESPACE = uuid.UUID("6fe8b0f6-31d0-4b0e-8a5d-0c6a3b9b7d41")
# Of the form of a property set that says what a file holds, and of its properties.
SUMMARY_FORMAT = uuid.UUID("f29f85e0-4ff9-1068-ab91-08002b27b3d9").bytes_le
REVISION, CREATED, SAVED = 9, 12, 13
SECONDS_FROM_1601_TO_1970 = 11644473600
TICKS_PER_SECOND = 10_000_000


class Failure(Exception):
    """One line that says what failed."""


def run(command, **options):
    """Runs a tool of msitools. They warn of what they leave out and end well all the same: no word is accepted."""
    try:
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False,
                              **options)
    except OSError as error:
        raise Failure(f"{command[0]}: {error.strerror}") from error
    if done.returncode != 0 or done.stdout.strip():
        raise Failure(f"{command[0]}: {done.stdout.strip() or done.returncode}")


def sign(path):
    """Has a file signed, where there is somebody who signs."""
    command = os.environ.get("PELORA_SIGN")
    if command and subprocess.run([*shlex.split(command), str(path)], check=False).returncode != 0:
        raise Failure(f"{path.name} could not be signed")


def identifier(*parts):
    return "{" + str(uuid.uuid5(NAMESPACE, "/".join(parts))).upper() + "}"


def content_of(arguments, source_date, files):
    """A checksum of everything that goes into the package."""
    content = hashlib.sha256()
    for path in (*files, pathlib.Path(__file__)):
        content.update(hashlib.sha256(path.read_bytes()).digest())
    for text in (arguments.version, arguments.homepage, arguments.contact, str(source_date)):
        content.update(hashlib.sha256(text.encode()).digest())
    return content.hexdigest()


def summary_properties(data):
    """Where the package's own properties stand in its file: place of the value by number."""
    start = data.find(SUMMARY_FORMAT)
    if start < 0 or data.find(SUMMARY_FORMAT, start + 1) >= 0:
        raise Failure("the package does not have one summary")
    section = start - 28 + struct.unpack_from("<I", data, start + 16)[0]
    _, count = struct.unpack_from("<II", data, section)
    return {number: section + offset + 4
            for number, offset in struct.iter_unpack("<II", data[section + 8:section + 8 + 8 * count])}


def settle_summary(path, package_code, source_date):
    """Writes over what was made up when the package was: its identifier and its times."""
    data = bytearray(path.read_bytes())
    places = summary_properties(data)
    revision = package_code.encode()
    length = struct.unpack_from("<I", data, places[REVISION])[0]
    if length != len(revision) + 1:
        raise Failure("the package's identifier has another length")
    data[places[REVISION] + 4:places[REVISION] + 4 + len(revision)] = revision
    ticks = (source_date + SECONDS_FROM_1601_TO_1970) * TICKS_PER_SECOND
    for number in (CREATED, SAVED):
        struct.pack_into("<Q", data, places[number], ticks)
    path.write_bytes(data)


def make(arguments, source_date, folder):
    """Makes the package in an empty folder, and gives its path."""
    files = []
    for source, name in ((SOURCE, "pelora.wxs"), (arguments.registration, "registration.wxi"),
                         (arguments.module, "PeloraADS.DLL"), (ICON, "object.ico"), (LICENCE, "LICENSE.txt")):
        shutil.copyfile(source, folder / name)
        files.append(folder / name)
    if not arguments.signed_module:
        sign(folder / "PeloraADS.DLL")
    for path in files:
        # The cabinet holds the files with their times.
        os.utime(path, (source_date, source_date))
    package_code = identifier("package", content_of(arguments, source_date, files))
    values = {
        "ProductCode": identifier("product", arguments.version),
        "Version": arguments.version,
        "Homepage": arguments.homepage,
        "Contact": arguments.contact,
        "Module": "PeloraADS.DLL",
        "Licence": "LICENSE.txt",
        "Icon": "object.ico",
    }
    definitions = [part for name, value in values.items() for part in ("-D", f"{name}={value}")]
    environment = dict(os.environ, TZ="UTC", LC_ALL="C.UTF-8")
    package = folder / "pelora.msi"
    run(["wixl", "-a", "x64", "-o", package.name, "pelora.wxs", *definitions], cwd=folder, env=environment)
    # What the compiler cannot say. A file with a version replaces one with a lower version, whatever its checksum;
    # the feature is neither left out nor offered without being installed.
    run(["msibuild", package.name,
         "-q", f"UPDATE File SET Version = '{arguments.version}.0', Language = '0' WHERE File = 'PeloraADS.DLL'",
         "-q", "DELETE FROM MsiFileHash WHERE File_ = 'PeloraADS.DLL'",
         "-q", "UPDATE Feature SET Attributes = 24"], cwd=folder, env=environment)
    settle_summary(package, package_code, source_date)
    sign(package)
    return package


def project_version():
    for line in (ROOT / "CMakeLists.txt").read_text(encoding="utf-8").splitlines():
        if line.startswith("project("):
            return line.split("VERSION ")[1].split()[0]
    raise Failure("CMakeLists.txt names no version")


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("registration", help="registration.wxi, which the native build makes")
    parser.add_argument("module", help="PeloraADS.DLL")
    parser.add_argument("package", help="the installer to write")
    parser.add_argument("--version", help="in place of the project's; three numbers")
    parser.add_argument("--homepage", default="https://pelora.example/", help="link of the installed program's entry")
    parser.add_argument("--contact", default="The Pelora administration developers",
                        help="whom the installed program's entry names")
    parser.add_argument("--signed-module", action="store_true", help="the module has been signed already")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    try:
        arguments.version = arguments.version or project_version()
        source_date = int(subprocess.check_output([ROOT / "tools" / "source_date.sh"]))
        with tempfile.TemporaryDirectory() as folder:
            shutil.copyfile(make(arguments, source_date, pathlib.Path(folder)), arguments.package)
    except (Failure, OSError, subprocess.CalledProcessError) as failure:
        sys.exit(f"make_msi.py: {failure}")


if __name__ == "__main__":
    main()
