#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Gives the lab's domain a second site, in which the lab's machine is, and tells its name servers of the controllers
there, as those would do themselves by and by. The domain is not running.

    prepare_sites.py SETTINGS DOMAIN SITE SUBNETS WRITABLE-CONTROLLER READ-ONLY-CONTROLLER

SUBNETS is a list with blanks. The controllers' addresses and aliases they register themselves when they join.
"""
import sys

import ldb
from samba.auth import system_session
from samba.dcerpc import misc
from samba.ndr import ndr_pack
from samba.param import LoadParm
from samba.provision.sambadns import SRVRecord
from samba.samdb import SamDB
from samba.sites import create_site
from samba.subnets import create_subnet

settings, domain, site, subnets, writable, read_only = sys.argv[1:]
lp = LoadParm()
lp.load(settings)
samdb = SamDB(session_info=system_session(), lp=lp)
configuration = samdb.get_config_basedn()

create_site(samdb, configuration, site)
links = samdb.search(base=configuration, expression="(objectClass=siteLink)", attrs=[])
link = ldb.Message(links[0].dn)
link["siteList"] = ldb.MessageElement(f"CN={site},CN=Sites,{configuration}", ldb.FLAG_MOD_ADD, "siteList")
samdb.modify(link)
for subnet in subnets.split():
    create_subnet(samdb, configuration, subnet, site)

# The name under which a controller fetches changes from this one.
agent = samdb.search(base=samdb.get_dsServiceName(), scope=ldb.SCOPE_BASE, attrs=["objectGUID"])[0]
name = f"E3514235-4B06-11D1-AB04-00C04FC2DCD2/{misc.GUID(agent['objectGUID'][0])}/{domain}"
own = samdb.search(base=samdb.get_default_basedn(), attrs=[],
                   expression="(&(objectClass=computer)(primaryGroupID=516))")
account = ldb.Message(own[0].dn)
account["servicePrincipalName"] = ldb.MessageElement(name, ldb.FLAG_MOD_ADD, "servicePrincipalName")
samdb.modify(account)

root = samdb.get_default_basedn()
own_zone = f"DC={domain},CN=MicrosoftDNS,DC=DomainDnsZones,{root}"
locator_zone = f"DC=_msdcs.{domain},CN=MicrosoftDNS,DC=ForestDnsZones,{root}"


def register(zone, name, controller, port):
    """Adds a controller to those of a service."""
    node = ldb.Message(ldb.Dn(samdb, f"DC={name},{zone}"))
    is_new = not samdb.search(base=zone, scope=ldb.SCOPE_ONELEVEL, expression=f"(name={name})", attrs=[])
    record = ndr_pack(SRVRecord(f"{controller}.{domain}", port))
    node["dnsRecord"] = ldb.MessageElement(record, ldb.FLAG_MOD_ADD, "dnsRecord")
    if is_new:
        node["objectClass"] = ["top", "dnsNode"]
        samdb.add(node)
    else:
        samdb.modify(node)


for controller in (writable, read_only):
    register(locator_zone, f"_ldap._tcp.{site}._sites.dc", controller, 389)
    register(locator_zone, f"_ldap._tcp.{site}._sites.gc", controller, 3268)
# Read-only ones serve their site alone.
register(own_zone, "_ldap._tcp", writable, 389)
register(locator_zone, "_ldap._tcp.dc", writable, 389)
register(locator_zone, "_ldap._tcp.gc", writable, 3268)
