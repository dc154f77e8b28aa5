#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Has a controller that is not running fetch changes from another one whenever it is told to (samba-tool drs
replicate), as the domain's own knowledge of its sites would have it after some minutes.

    link_controllers.py SETTINGS SOURCE-CONTROLLER
"""
import sys

import ldb
from samba.auth import system_session
from samba.dcerpc import drsuapi, misc
from samba.kcc.kcc_utils import RepsFromTo
from samba.ndr import ndr_pack
from samba.param import LoadParm
from samba.samdb import SamDB

settings, source = sys.argv[1:]
lp = LoadParm()
lp.load(settings)
samdb = SamDB(session_info=system_session(), lp=lp)
configuration = samdb.get_config_basedn()

servers = samdb.search(base=configuration, expression=f"(&(objectClass=server)(cn={source}))", attrs=[])
agent = samdb.search(base=f"CN=NTDS Settings,{servers[0].dn}", scope=ldb.SCOPE_BASE,
                     attrs=["objectGUID", "invocationId"])[0]
guid = misc.GUID(agent["objectGUID"][0])
for partition in (samdb.get_default_basedn(), configuration):
    link = RepsFromTo(str(partition))
    link.source_dsa_obj_guid = guid
    link.source_dsa_invocation_id = misc.GUID(agent["invocationId"][0])
    link.dns_name1 = f"{source}.{samdb.forest_dns_name()}"
    # On request alone: tests say when.
    link.replica_flags = drsuapi.DRSUAPI_DRS_NEVER_NOTIFY
    link.schedule = [0] * 84
    change = ldb.Message(ldb.Dn(samdb, str(partition)))
    change["repsFrom"] = ldb.MessageElement(ndr_pack(link.ndr_blob), ldb.FLAG_MOD_REPLACE, "repsFrom")
    samdb.modify(change)
