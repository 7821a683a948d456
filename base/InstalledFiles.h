#pragma once

// The names of what is installed and written, for all who write, read or remove it. A name that is
// missing here would be left behind by the uninstaller.
namespace InstalledFiles {

// Beside the client, written by the installer.
constexpr char clientLauncher[] = "VornRun.sh";
constexpr char uninstallLauncher[] = "UninstallRun.sh";
constexpr char client[] = "VORN";
constexpr char uninstaller[] = "Uninstall";
constexpr char icon[] = "small.ico";
constexpr char installer[] = "VornInstall";
constexpr char startScript[] = "start.sh";
constexpr char qtConfiguration[] = "qt.conf";
constexpr char manifest[] = "manifest.txt"; // every file of the bundle, one path a line
constexpr int largestManifest = 4 * 1024 * 1024; // bytes; a real one has some hundred lines
// What earlier versions brought and this one does not, written before their manifest is replaced.
constexpr char previousManifest[] = "manifest.old.txt";

// Written by the programs.
constexpr char settings[] = "VornData.json";
constexpr char commonUsedLines[] = "CommonUsedLine.json";
constexpr char versionInfo[] = "VersionInfo.json";
constexpr char updateInfo[] = "UpdateInfo.json";
constexpr char errorLog[] = "errorlog.txt";

// With "." and a number behind it a directory for one file that is being copied.
constexpr char unfinishedCopy[] = ".vorn";

// Supplied with the bundle.
constexpr char channel[] = "Channel.json";

constexpr char menuEntry[] = "/usr/share/applications/Vorn.desktop";
constexpr char autostartEntry[] = "/etc/xdg/autostart/Vorn.desktop";

} // namespace InstalledFiles
