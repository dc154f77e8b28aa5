#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Prints the bill of materials (SPDX 2.3, JSON) of a release: its files, and what they are built of and need.

    tools/make_sbom.py VERSION FOLDER

What the Debian packages need is read from them; what is linked into the Windows module belongs to its compiler.
"""
import hashlib
import json
import pathlib
import re
import subprocess
import sys
import time

NAME = "pelora-administration"
SUPPLIER = "Organization: The Pelora administration developers"
NOBODY = "NOASSERTION"
# What the Windows module holds of its compiler: the Debian package, and the licence under which that part is.
LINKED_INTO_THE_MODULE = {
    "g++-mingw-w64-x86-64-posix": "GPL-3.0-or-later WITH GCC-exception-3.1",
    "mingw-w64-x86-64-dev": "ZPL-2.1",
}


def identifier(*parts):
    return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.-]+", "-", "-".join(parts))


def output_of(*command):
    return subprocess.check_output(command, text=True)


def file_entry(path):
    data = path.read_bytes()
    return {
        "SPDXID": identifier("File", path.name),
        "fileName": "./" + path.name,
        "checksums": [{"algorithm": "SHA1", "checksumValue": hashlib.sha1(data).hexdigest()},
                      {"algorithm": "SHA256", "checksumValue": hashlib.sha256(data).hexdigest()}],
        "licenseConcluded": "Apache-2.0",
        "copyrightText": NOBODY,
    }


def package_entry(name, version, licence=NOBODY, supplier=NOBODY, reference=None):
    entry = {
        "SPDXID": identifier("Package", name),
        "name": name,
        "versionInfo": version,
        "supplier": supplier,
        "downloadLocation": NOBODY,
        "filesAnalyzed": False,
        "licenseConcluded": licence,
        "licenseDeclared": licence,
        "copyrightText": NOBODY,
    }
    if reference:
        entry["externalRefs"] = [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                                  "referenceLocator": reference}]
    return entry


def debian_package(name, licence=NOBODY):
    """An entry for a package of the system that this was built on."""
    version, architecture = output_of("dpkg-query", "--show", "--showformat=${Version} ${Architecture}\n",
                                      name).splitlines()[0].split()
    return package_entry(name, version, licence, reference=f"pkg:deb/debian/{name}@{version}?arch={architecture}")


def needed_by(package):
    """The names in a package's dependencies; of alternatives the first."""
    fields = output_of("dpkg-deb", "--field", str(package), "Depends")
    return sorted({re.split(r"[ (|:]", part.strip(), maxsplit=1)[0] for part in fields.split(",") if part.strip()})


def bill_of_materials(version, folder, source_date):
    paths = sorted(path for path in folder.iterdir() if path.suffix not in (".new", ".json") and path.name != "SHA256SUMS")
    files = [file_entry(path) for path in paths]
    ours = package_entry(NAME, version, "Apache-2.0", SUPPLIER)
    packages = {ours["SPDXID"]: ours}
    relations = [("SPDXRef-DOCUMENT", "DESCRIBES", ours["SPDXID"])]
    relations += [(ours["SPDXID"], "CONTAINS", entry["SPDXID"]) for entry in files]
    for path in paths:
        if path.suffix == ".deb":
            for name in needed_by(path):
                entry = debian_package(name)
                packages[entry["SPDXID"]] = entry
                relations.append((identifier("File", path.name), "DEPENDS_ON", entry["SPDXID"]))
        if path.suffix == ".DLL":
            for name, licence in LINKED_INTO_THE_MODULE.items():
                entry = debian_package(name, licence)
                packages[entry["SPDXID"]] = entry
                relations.append((identifier("File", path.name), "STATIC_LINK", entry["SPDXID"]))
    content = hashlib.sha256("".join(file["checksums"][1]["checksumValue"] for file in files).encode()).hexdigest()
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"{NAME}-{version}",
        "documentNamespace": f"https://pelora.example/spdx/{NAME}-{version}-{content}",
        "creationInfo": {"created": time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(source_date)),
                         "creators": ["Tool: make_sbom.py"]},
        "packages": list(packages.values()),
        "files": files,
        "relationships": [{"spdxElementId": one, "relationshipType": kind, "relatedSpdxElement": other}
                          for one, kind, other in relations],
    }


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    source_date = int(output_of(str(pathlib.Path(__file__).resolve().with_name("source_date.sh"))))
    json.dump(bill_of_materials(sys.argv[1], pathlib.Path(sys.argv[2]), source_date), sys.stdout, indent=1)
    print()


if __name__ == "__main__":
    main()
