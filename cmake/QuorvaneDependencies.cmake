# Every library that Quorvane takes from the system, found once for all folders.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(fmt REQUIRED)
find_package(CLI11 REQUIRED)
find_package(nlohmann_json REQUIRED)
pkg_check_modules(UDEV REQUIRED IMPORTED_TARGET libudev)
if(QUORVANE_TESTS)
  find_package(GTest REQUIRED)
endif()
if(QUORVANE_BENCH)
  find_package(benchmark REQUIRED)
endif()
