# SPDX-License-Identifier: Apache-2.0
# cmake -DFILE=file -DNAME=name -DOUTPUT=header -P write_checksum.cmake
#
# Writes a header that defines NAME as the checksum of FILE: a source that embeds the file and includes the
# header is another one to a compiler cache whenever the file is.
file(SHA256 "${FILE}" checksum)
file(WRITE "${OUTPUT}" "#define ${NAME} \"${checksum}\"\n")
