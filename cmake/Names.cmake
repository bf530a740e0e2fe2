# The names and numbers that programs of two languages share: C++ includes "names/Names.h", where journal_folder is
# kJournalFolder; shell scripts of this tree read names/names.sh of the build folder, where it is journal_folder; files
# that are configured write @KORVAN_JOURNAL_FOLDER@.

set(names_header "#pragma once\n")
set(names_shell "")

# korvan_name(NAME VALUE COMMENT...): a number where VALUE has digits only, else a text without quotes. Each COMMENT is
# a line, without a semicolon.
macro(korvan_name name value)
  string(TOUPPER KORVAN_${name} variable)
  set(${variable} ${value})
  string(REPLACE "_" ";" parts ${name})
  set(constant k)
  foreach(part IN LISTS parts)
    string(SUBSTRING ${part} 0 1 initial)
    string(SUBSTRING ${part} 1 -1 rest)
    string(TOUPPER ${initial} initial)
    string(APPEND constant ${initial}${rest})
  endforeach()
  if("${value}" MATCHES "^[0-9]+$")
    set(definition "unsigned ${constant} = ${value}")
  else()
    set(definition "char ${constant}[] = \"${value}\"")
  endif()
  string(JOIN "\n/// " comment ${ARGN})
  string(APPEND names_header "\n/// ${comment}\nconstexpr ${definition};\n")
  string(APPEND names_shell "${name}='${value}'\n")
endmacro()

korvan_name(
  tunnel_mark 19311
  "The mark of OpenVPN's own packets, which compose gives to its socket. Policy rules keep them out of the tunnel and send"
  "them to a routing table of their own, where the default routes are that lock-down has taken away.")
korvan_name(tunnel_table ${KORVAN_TUNNEL_MARK} "The number of that table.")
korvan_name(
  journal_folder /run/korvan
  "Root-only folder for what the helpers must remember until the machine is as it was. It is on a file system that a"
  "restart of the machine empties, just as it empties the routing tables.")
korvan_name(
  network_journal network.journal
  "The journal's name in that folder. It is there from before the network is changed until all is as it was.")
korvan_name(
  tunnel_group ${KORVAN_TUNNEL_MARK}
  "The group of a tunnel's interface, into which OpenVPN's own packets are never sent.")
korvan_name(
  tunnel_holder window-lock
  "The name, in that folder, of the lock on the machine's tunnel. Whoever may start helpers holds it, root's own window"
  "or the root part of somebody's. Its content is that user's number.")
korvan_name(
  person_variable KORVAN_PERSON
  "Environment variable in which a helper is told the number of the user for whom it works, where that is not the one"
  "who started it.")
korvan_name(
  last_remote last-remote
  "The name, in that folder, of the record of the address that each server's name had when it was last connected to:"
  "lines \"NAME ADDRESS\".")
korvan_name(
  service_profiles /run/NetworkManager/system-connections
  "Where NetworkManager keeps connection profiles until the machine restarts, those of the system VPN services too.")
korvan_name(
  restart_argument KORVAN_RESTART_ARGUMENT
  "Environment variable in which the start-up tells compose9 the one argument that the program was started with, where"
  "it was one: after the update the program is started with it again.")
korvan_name(
  update_outcome KORVAN_UPDATE_OUTCOME
  "Environment variable in which a program that is started again after an update is told the line of the log about it.")
korvan_name(
  arguments_on_input "korvan: arguments on standard input"
  "Stands in the file of every helper that with - alone takes its arguments from standard input, each ended by a NUL."
  "Everything else that lies in its place gets them on its command line, which every user of the machine can read.")
korvan_name(
  update_keys_file update-keys
  "Beside the program: the public keys of which one must have signed every update, minisign's lines, which begin with"
  "RW, with blanks or line ends between them. Where it is missing updates need no signature.")
korvan_name(packaged_folder /opt/korvan "Where the package puts the bundle and updates are made ready.")
korvan_name(packaged_bundle ${KORVAN_PACKAGED_FOLDER}/Korvan.app "The package's bundle.")
korvan_name(launcher /usr/bin/korvan "The package's launcher, which gets the program root's rights.")

# What the program keeps in the folder of its state (names/StateFiles.h), without what is inside a folder: state_kept
# and state_passing.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/names/StateFiles.h)
file(READ ${CMAKE_SOURCE_DIR}/names/StateFiles.h rows)
string(REGEX MATCHALL "\"/[^/\"]+\", *(Kept|Passing)" rows "${rows}")
foreach(row IN LISTS rows)
  string(REGEX MATCH "/([^\"]+)\", *(Kept|Passing)" row ${row})
  string(TOUPPER ${CMAKE_MATCH_2} fate)
  string(APPEND KORVAN_STATE_${fate} " ${CMAKE_MATCH_1}")
endforeach()
foreach(fate KEPT PASSING)
  string(STRIP "${KORVAN_STATE_${fate}}" KORVAN_STATE_${fate})
  string(TOLOWER state_${fate} name)
  string(APPEND names_shell "${name}='${KORVAN_STATE_${fate}}'\n")
endforeach()

file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/names/Names.h CONTENT "${names_header}" @ONLY)
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/names/names.sh CONTENT "${names_shell}" @ONLY)
