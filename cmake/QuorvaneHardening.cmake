# Hardening for every program and library, in every build. An option is left out if the compiler
# does not know it, or if CXXFLAGS, LDFLAGS, a toolchain file or the compiler's defaults already set
# it or its opposite.

include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)

if(QUORVANE_SANITIZE)
  return()
endif()

string(TOUPPER "${CMAKE_BUILD_TYPE}" quorvane_config)
set(quorvane_compile_flags "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${quorvane_config}}")
set(quorvane_link_flags
  "${quorvane_compile_flags} ${CMAKE_EXE_LINKER_FLAGS} ${CMAKE_EXE_LINKER_FLAGS_${quorvane_config}}")
# Part of the names of the cached results below, so that other flags are checked anew.
string(MD5 quorvane_flags_id
  "${CMAKE_CXX_COMPILER} ${CMAKE_CXX_COMPILER_VERSION} ${quorvane_link_flags}")
string(SUBSTRING "${quorvane_flags_id}" 0 8 quorvane_flags_id)

# quorvane_compiles(RESULT LINES...): whether this source compiles with the flags of this build.
function(quorvane_compiles result)
  set(CMAKE_REQUIRED_QUIET ON)
  set(CMAKE_TRY_COMPILE_CONFIGURATION "${CMAKE_BUILD_TYPE}")
  set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
  list(JOIN ARGN "\n" source)
  check_cxx_source_compiles("${source}" ${result}_${quorvane_flags_id})
  set(${result} "${${result}_${quorvane_flags_id}}" PARENT_SCOPE)
endfunction()

# quorvane_harden(OPTION DECIDED MACRO): adds a compile option, unless a given flag matches DECIDED
# or the compiler defines MACRO anyway.
function(quorvane_harden option decided macro)
  if(quorvane_compile_flags MATCHES "${decided}")
    return()
  endif()
  string(MAKE_C_IDENTIFIER "QUORVANE_HAS${option}" known)
  if(macro)
    quorvane_compiles(${known}_DEFAULT "#ifndef ${macro}" "#error" "#endif")
    if(${known}_DEFAULT)
      return()
    endif()
  endif()
  set(CMAKE_REQUIRED_QUIET ON)
  # An option that causes a warning, because it has no effect here, is left out as well.
  set(CMAKE_REQUIRED_FLAGS -Werror)
  check_cxx_compiler_flag(${option} ${known}_${quorvane_flags_id})
  if(${known}_${quorvane_flags_id})
    add_compile_options(${option})
  endif()
endfunction()

# quorvane_harden_link(KEYWORD): adds -z KEYWORD, unless the link flags name it or its opposite.
function(quorvane_harden_link keyword)
  if(quorvane_link_flags MATCHES "-z[, ]?(no)?${keyword}([ ,]|$)" OR
     (keyword STREQUAL "now" AND quorvane_link_flags MATCHES "-z[, ]?lazy"))
    return()
  endif()
  set(CMAKE_REQUIRED_QUIET ON)
  check_linker_flag(CXX LINKER:-z,${keyword} QUORVANE_HAS_Z_${keyword}_${quorvane_flags_id})
  if(QUORVANE_HAS_Z_${keyword}_${quorvane_flags_id})
    add_link_options(LINKER:-z,${keyword})
  endif()
endfunction()

# Buffer checks by the C library (_FORTIFY_SOURCE). They need optimisation. Level 3 needs GCC 12 or
# clang 9, and glibc 2.34.
function(quorvane_fortify)
  quorvane_compiles(QUORVANE_OPTIMISES "#ifndef __OPTIMIZE__" "#error" "#endif")
  quorvane_compiles(QUORVANE_FORTIFIED "#ifndef _FORTIFY_SOURCE" "#error" "#endif")
  if(NOT QUORVANE_OPTIMISES OR QUORVANE_FORTIFIED OR quorvane_compile_flags MATCHES "_FORTIFY_SOURCE")
    return()
  endif()
  quorvane_compiles(QUORVANE_FORTIFIES_3
    "#define _FORTIFY_SOURCE 3" "#include <cstdlib>"
    "#if !defined(__USE_FORTIFY_LEVEL) || __USE_FORTIFY_LEVEL < 3" "#error" "#endif")
  set(level 2)
  if(QUORVANE_FORTIFIES_3)
    set(level 3)
  endif()
  add_compile_options(-D_FORTIFY_SOURCE=${level})
endfunction()

# Position-independent executables. Targets with position-independent code are left alone. -pie is
# for linking programs only.
function(quorvane_pie)
  if(quorvane_link_flags MATCHES "-f(no-)?(pie|PIE|pic|PIC)|(^| )-(no-)?pie|(^| )-static")
    return()
  endif()
  quorvane_compiles(QUORVANE_PIE_DEFAULT "#ifndef __PIE__" "#error" "#endif")
  if(QUORVANE_PIE_DEFAULT)
    return()
  endif()
  set(type "$<TARGET_PROPERTY:TYPE>")
  add_compile_options("$<$<OR:$<STREQUAL:${type},EXECUTABLE>,$<STREQUAL:${type},STATIC_LIBRARY>>:-fPIE>")
  add_link_options("$<$<STREQUAL:${type},EXECUTABLE>:-pie>")
endfunction()

quorvane_fortify()
quorvane_harden(-fstack-protector-strong "-f(no-)?stack-protector" __SSP_STRONG__)
quorvane_harden(-fstack-clash-protection "-f(no-)?stack-clash-protection" "")
quorvane_harden(-fcf-protection "-f(no-)?cf-protection" __CET__)
quorvane_harden(-mbranch-protection=standard "-mbranch-protection" __ARM_FEATURE_BTI_DEFAULT)
quorvane_pie()
quorvane_harden_link(relro)
quorvane_harden_link(now)
