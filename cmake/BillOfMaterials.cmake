# Writes what is linked into the binaries of a package as a bill of materials, SPDX 2.3, with the licence texts beside
# it. Versions are those of Debian's packages, licences what their copyright files say: where one no longer says it, this
# fails, to be looked at.

# bill_add(ID NAME PACKAGE LICENCE PATTERN BINARY ...): the copyright file has to match the pattern.
function(bill_add id name package licence pattern)
  execute_process(
    COMMAND dpkg-query -W -f "\${Version}|\${Architecture}" ${package}
    OUTPUT_VARIABLE state
    COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCH "^([^|]+)[|](.+)$" state "${state}")
  set(version ${CMAKE_MATCH_1})
  set(architecture ${CMAKE_MATCH_2})

  set(copyright /usr/share/doc/${package}/copyright)
  file(READ ${copyright} text)
  if(NOT text MATCHES "${pattern}")
    message(FATAL_ERROR "${copyright} does not say that ${name} is under ${licence}: no match of\n${pattern}")
  endif()
  configure_file(${copyright} ${licences_dir}/${package}.txt COPYONLY)

  set(purl "pkg:deb/debian/${package}@${version}?arch=${architecture}")
  string(REPLACE "+" "%2B" purl ${purl})
  set(entry [[
    {
      "SPDXID": "SPDXRef-@id@",
      "name": "@name@",
      "versionInfo": "@version@",
      "supplier": "Organization: Debian",
      "downloadLocation": "NOASSERTION",
      "filesAnalyzed": false,
      "licenseConcluded": "NOASSERTION",
      "licenseDeclared": "@licence@",
      "copyrightText": "NOASSERTION",
      "comment": "Of Debian's package @package@; its copyright file is licences/@package@.txt",
      "externalRefs": [
        {
          "referenceCategory": "PACKAGE-MANAGER",
          "referenceType": "purl",
          "referenceLocator": "@purl@"
        }
      ]
    }]])
  string(CONFIGURE "${entry}" entry @ONLY)
  string(APPEND bill_packages ",\n${entry}")
  foreach(binary IN LISTS ARGN)
    bill_relate(${binary} STATIC_LINK ${id})
  endforeach()
  set(bill_packages "${bill_packages}" PARENT_SCOPE)
  set(bill_relations "${bill_relations}" PARENT_SCOPE)
endfunction()

macro(bill_relate from type to)
  string(APPEND bill_relations ",\n    { \"spdxElementId\": \"SPDXRef-${from}\", \"relationshipType\": \"${type}\", "
                               "\"relatedSpdxElement\": \"SPDXRef-${to}\" }")
endmacro()

set(licences_dir ${folder}/${CPACK_VORLINK_DOC_DIR}/licences)
set(bill_packages "")
set(bill_relations "")

file(GLOB_RECURSE binaries RELATIVE ${folder} ${folder}/*.dll ${folder}/*.exe)
list(SORT binaries)
set(every_binary "")
foreach(binary IN LISTS binaries)
  get_filename_component(name ${binary} NAME)
  string(REPLACE "_" "-" id ${name}) # an identifier has no underscore
  list(APPEND every_binary ${id})
  file(SHA256 ${folder}/${binary} sha256)
  set(entry [[
    {
      "SPDXID": "SPDXRef-@id@",
      "name": "@name@",
      "versionInfo": "@CPACK_PACKAGE_VERSION@",
      "packageFileName": "./@binary@",
      "checksums": [{ "algorithm": "SHA256", "checksumValue": "@sha256@" }],
      "downloadLocation": "NOASSERTION",
      "filesAnalyzed": false,
      "licenseConcluded": "NOASSERTION",
      "licenseDeclared": "NONE",
      "copyrightText": "NOASSERTION"
    }]])
  string(CONFIGURE "${entry}" entry @ONLY)
  string(APPEND bill_packages ",\n${entry}")
  bill_relate(Vorlink CONTAINS ${id})
endforeach()

set(gcc_exception "GPL-3.0-or-later WITH GCC-exception-3.1")
set(gcc_says "with version 3.1 of the GCC.Runtime Library Exception.*")
bill_add(tomlplusplus toml++ libtomlplusplus-dev MIT "Files: +[*]\n[^\n]*\nLicense: +Expat\n" pnputil.exe
         vorlink-simulator.dll)
bill_add(CLI11 CLI11 libcli11-dev BSD-3-Clause "Files: [*]\n[^\n]*\nLicense: BSD-3-clause\n" vorlinkctl.exe)
bill_add(nlohmann-json nlohmann-json nlohmann-json3-dev MIT "Files: [*]\n[^\n]*\nLicense: Expat\n" vorlinkctl.exe)
bill_add(libstdcxx libstdc++ g++-mingw-w64-x86-64-posix "${gcc_exception}" "${gcc_says}\n - libstdc[+][+]-v3"
         ${every_binary})
bill_add(libgcc libgcc gcc-mingw-w64-x86-64-posix "${gcc_exception}" "${gcc_says}\n - libgcc " ${every_binary})
bill_add(winpthreads winpthreads mingw-w64-x86-64-dev "MIT AND BSD-3-Clause"
         "Files: mingw-w64-libraries/winpthreads/[*]\n[^\n]*\nLicense: expat\n" ${every_binary})
bill_add(mingw-w64-crt "mingw-w64's C runtime start-up" mingw-w64-x86-64-dev ZPL-2.1 "Files: [*]\n[^\n]*\nLicense: ZPL-2.1\n"
         ${every_binary})

# Two bills of different packages have different names.
write_checksums(${CPACK_PACKAGE_DIRECTORY}/bill.sums)
file(SHA256 ${CPACK_PACKAGE_DIRECTORY}/bill.sums identity)
file(REMOVE ${CPACK_PACKAGE_DIRECTORY}/bill.sums)

string(TIMESTAMP created "%Y-%m-%dT%H:%M:%SZ" UTC)
set(bill [[
{
  "spdxVersion": "SPDX-2.3",
  "dataLicense": "CC0-1.0",
  "SPDXID": "SPDXRef-DOCUMENT",
  "name": "@CPACK_PACKAGE_FILE_NAME@",
  "documentNamespace": "https://vorlink.invalid/spdx/@CPACK_PACKAGE_FILE_NAME@-@identity@",
  "creationInfo": { "created": "@created@", "creators": ["Tool: vorlink-package-@CPACK_PACKAGE_VERSION@"] },
  "packages": [
    {
      "SPDXID": "SPDXRef-Vorlink",
      "name": "Vorlink",
      "versionInfo": "@CPACK_PACKAGE_VERSION@",
      "downloadLocation": "NOASSERTION",
      "filesAnalyzed": false,
      "licenseConcluded": "NOASSERTION",
      "licenseDeclared": "NONE",
      "copyrightText": "NOASSERTION"
    }@bill_packages@
  ],
  "relationships": [
    { "spdxElementId": "SPDXRef-DOCUMENT", "relationshipType": "DESCRIBES", "relatedSpdxElement": "SPDXRef-Vorlink" }@bill_relations@
  ]
}
]])
string(CONFIGURE "${bill}" bill @ONLY)
file(WRITE ${folder}/${CPACK_VORLINK_DOC_DIR}/vorlink.spdx.json "${bill}")
