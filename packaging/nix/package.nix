# For callPackage: `pkgs.callPackage packaging/nix/package.nix { }`.
#
# On NixOS the package goes to two places of the configuration, the second of which lets the user at the
# machine open a wheel base:
#
#   environment.systemPackages = [ quorvane ];
#   services.udev.packages = [ quorvane ];
{
  lib,
  stdenv,
  cmake,
  ninja,
  pkg-config,
  qt6,
  cli11,
  fmt,
  nlohmann_json,
  libuuid,
  udev,
}:

stdenv.mkDerivation {
  pname = "quorvane";
  version = "0.1.0";
  src = lib.cleanSource ../..;

  nativeBuildInputs = [
    cmake
    ninja
    pkg-config
    qt6.wrapQtAppsHook
  ];
  buildInputs = [
    cli11
    fmt
    libuuid
    nlohmann_json
    qt6.qtbase
    qt6.qtsvg
    qt6.qtwayland
    udev
  ];
  cmakeFlags = [
    (lib.cmakeBool "CMAKE_UNITY_BUILD" true)
    (lib.cmakeBool "QUORVANE_TESTS" false)
  ];
  # quorvanectl needs no Qt, and none of its variables.
  dontWrapQtApps = true;
  preFixup = ''
    wrapQtApp "$out/bin/quorvane"
  '';

  meta = {
    description = "Tuning for Fanatec sim-racing wheel bases";
    homepage = "https://quorvane.example";
    license = lib.licenses.mit;
    mainProgram = "quorvane";
    platforms = lib.platforms.linux;
  };
}
