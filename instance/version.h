// Which version this is. Fixed texts: scripts and hosts compare them.
#pragma once

namespace zy {

constexpr const char *versionEdition = "Professional";
constexpr const char *versionReleaseDate = "February 11, 2017";
constexpr const char *versionText = "";
constexpr int versionMajor = 8;
constexpr int versionMinor = 0;
constexpr int versionMicro = 0;
constexpr int versionBuild = 15421;

}  // namespace zy
