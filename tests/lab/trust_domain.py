#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Has a domain whose controller is not running trust another forest, and be trusted by it: the object that the local
security authority would write, with a secret that both sides know. (samba-tool has it written over the named pipes of
two running file servers, which the lab does not have.)

    trust_domain.py SETTINGS PARTNER SHORT-NAME SECURITY-IDENTIFIER SECRET
"""
import sys
import time

import ldb
import samba
from samba.auth import system_session
from samba.dcerpc import drsblobs, lsa, security
from samba.ndr import ndr_pack
from samba.param import LoadParm
from samba.samdb import SamDB

BOTH_WAYS = lsa.LSA_TRUST_DIRECTION_INBOUND | lsa.LSA_TRUST_DIRECTION_OUTBOUND
settings, partner, short_name, identifier, secret = sys.argv[1:]
lp = LoadParm()
lp.load(settings)
samdb = SamDB(session_info=system_session(), lp=lp)


def secrets():
    """The secret as both directions keep it."""
    clear = drsblobs.AuthInfoClear()
    value = list(secret.encode("utf-16-le"))
    # In this order: without a length there are no bytes.
    clear.size = len(value)
    clear.password = value
    information = drsblobs.AuthenticationInformation()
    information.LastUpdateTime = samba.unix2nttime(int(time.time()))
    information.AuthType = lsa.TRUST_AUTH_TYPE_CLEAR
    information.AuthInfo = clear
    current = drsblobs.AuthenticationInformationArray()
    current.count = 1
    current.array = [information]
    blob = drsblobs.trustAuthInOutBlob()
    blob.count = 1
    blob.current = current
    return ndr_pack(blob)


samdb.add({
    "dn": ldb.Dn(samdb, f"CN={partner},CN=System,{samdb.get_default_basedn()}"),
    "objectClass": ["top", "leaf", "trustedDomain"],
    "trustPartner": partner,
    "flatName": short_name,
    "securityIdentifier": ndr_pack(security.dom_sid(identifier)),
    "trustDirection": str(BOTH_WAYS),
    "trustType": str(lsa.LSA_TRUST_TYPE_UPLEVEL),
    "trustAttributes": str(lsa.LSA_TRUST_ATTRIBUTE_FOREST_TRANSITIVE),
    "trustAuthIncoming": secrets(),
    "trustAuthOutgoing": secrets(),
    "msDS-SupportedEncryptionTypes": str(security.KERB_ENCTYPE_AES256_CTS_HMAC_SHA1_96),
}, controls=["relax:0"])
