# SPDX-License-Identifier: Apache-2.0
# Makes the schema for ldifde of schema.ldif: a server takes classes only when it has read the attributes anew that
# they name, and links only when it has read the classes.
#
#   awk -f windows_schema.awk schema.ldif

function read_anew() {
  print "dn:"
  print "changetype: modify"
  print "add: schemaUpdateNow"
  print "schemaUpdateNow: 1"
  print "-"
  print ""
}

BEGIN {
  RS = ""
  print "# The attributes and classes of the Pelora groupware, made of schema.ldif for the tool of Windows. As a"
  print "# schema administrator, on the schema master; it may be run again at any time:"
  print "#"
  print "#   ldifde -i -k -f pelora-schema.ldf -c \"@SCHEMA@\" \"#schemaNamingContext\""
  print ""
}

/^#/ { next }
/^dn:\n/ { next }

{
  kind = /\nobjectClass: attributeSchema\n/ ? "attribute" : /\nobjectClass: classSchema\n/ ? "class" : "link"
  if (before != "" && kind != before) read_anew()
  before = kind
  print
  print ""
}

END { read_anew() }
