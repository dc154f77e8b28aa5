#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Adds copies of a container's first user to a domain of Samba's that nobody serves yet.

    copy_users.py SETTINGS DATABASE CONTAINER COUNT FIRST

"CN=Person 0" in CONTAINER (a DN) is there already; "CN=Person 1" to "CN=Person COUNT-1" are added beside it, with
names, addresses, identifiers and relative identifiers (FIRST plus the number) of their own.

Samba itself takes 20 ms for a user, and more the more there are: it copies whole lists of its index for each. So the
users go into the partition's own file without an index, and Samba makes that in the end, by its own rules.
"""
import sys
import uuid

import ldb
from samba import Ldb
from samba.auth import system_session
from samba.dcerpc import security
from samba.ndr import ndr_pack, ndr_unpack
from samba.param import LoadParm
from samba.samdb import SamDB

INDEX = "@INDEXLIST"
# What is searched for, and by what container. Names and identifiers are found in any case.
LEFT_OUT = ("@IDXATTR", "@IDXONE")


def change_index(database, how, values):
    message = ldb.Message(ldb.Dn(database, INDEX))
    for name in LEFT_OUT:
        message[name] = ldb.MessageElement(values.get(name, []), how, name)
    database.modify(message)


def copy_users(partition, container, count, first):
    user = partition.search("CN=Person 0," + container, ldb.SCOPE_BASE)[0]
    # Made up by whoever reads.
    user.remove("distinguishedName")
    account, _, _ = str(user["sAMAccountName"]).rpartition("0")
    address, _, domain = str(user["mail"]).partition("0@")
    domain_sid, _ = ndr_unpack(security.dom_sid, user["objectSid"][0]).split()
    for number in range(1, count):
        name = f"Person {number}"
        user.dn = ldb.Dn(partition, f"CN={name},{container}")
        own = {
            "cn": name,
            "name": name,
            "description": f"Number {number}",
            "mail": f"{address}{number}@{domain}",
            "sAMAccountName": f"{account}{number}",
            "objectGUID": uuid.uuid4().bytes_le,
            "objectSid": ndr_pack(security.dom_sid(f"{domain_sid}-{first + number}")),
        }
        for attribute, value in own.items():
            user[attribute] = ldb.MessageElement(value, ldb.FLAG_MOD_ADD, attribute)
        partition.add(user)


def main():
    settings_file, sam, container, count, first = sys.argv[1:]
    settings = LoadParm()
    settings.load(settings_file)
    domain = ldb.Dn(ldb.Ldb(), container)
    while str(domain.get_component_name(0)).upper() != "DC":
        domain = domain.parent()

    partition = Ldb(f"{sam}.d/{str(domain).upper()}.ldb")
    listed = partition.search(INDEX, ldb.SCOPE_BASE)[0]
    index = {name: [bytes(value) for value in listed[name]] for name in LEFT_OUT}
    partition.transaction_start()
    change_index(partition, ldb.FLAG_MOD_DELETE, {})
    copy_users(partition, container, int(count), int(first))
    partition.transaction_commit()
    del partition

    whole = SamDB(url=sam, lp=settings, session_info=system_session(settings))
    whole.transaction_start()
    change_index(whole, ldb.FLAG_MOD_REPLACE, index)
    whole.transaction_commit()


main()
