#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Provisions a domain controller as samba-tool does, but for the rights on the files of group policies: those only
root can set, nowhere in most containers, and the lab serves no files.

    provision_domain.py FOLDER REALM HOST PASSWORD
"""
import logging
import sys

from samba.auth import system_session
from samba.dsdb import DS_DOMAIN_FUNCTION_2008_R2
from samba.param import LoadParm
from samba.provision import provision

folder, realm, host, password = sys.argv[1:]
settings = LoadParm()
# Of this version of the Internet's protocol alone: there is but one such address of the other.
settings.set("interfaces", "127.0.0.1/8")
settings.set("bind interfaces only", "yes")
provision(logging.getLogger(), system_session(), targetdir=folder, lp=settings, samdb_fill="FULL", realm=realm,
          domain=realm.split(".")[0], hostname=host, hostip="127.0.0.1", adminpass=password,
          serverrole="active directory domain controller", dns_backend="SAMBA_INTERNAL", skip_sysvolacl=True,
          dom_for_fun_level=DS_DOMAIN_FUNCTION_2008_R2)
