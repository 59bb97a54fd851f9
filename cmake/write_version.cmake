# Run with -P at build time: fills TEMPLATE with VERSION and the commit checked out in SOURCE, and
# writes OUTPUT when its text changes. A tree that is not a checkout, or a machine without git,
# gives "unknown".

set(COMMIT "unknown")
if(EXISTS "${SOURCE}/.git")
  execute_process(
    COMMAND git -C "${SOURCE}" rev-parse --short=10 HEAD
    RESULT_VARIABLE result
    OUTPUT_VARIABLE output
    OUTPUT_STRIP_TRAILING_WHITESPACE
    ERROR_QUIET)
  if(result STREQUAL "0")
    set(COMMIT "${output}")
  endif()
endif()
configure_file("${TEMPLATE}" "${OUTPUT}" @ONLY)
