# Run with -P at build time: fills TEMPLATE with VERSION and the commit of the tree SOURCE. Writes
# OUTPUT only if its text changes.

include("${CMAKE_CURRENT_LIST_DIR}/QuorvaneCommit.cmake")
quorvane_commit("${SOURCE}" COMMIT time)
configure_file("${TEMPLATE}" "${OUTPUT}" @ONLY)
