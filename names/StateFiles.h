#pragma once

// The files that the program keeps: where they are, relative to the folder of its state, what becomes of each when an
// update or the package replaces or removes the program, and what it holds. Only their owner may read them, but for
// the settings file, which is an administrator's and which everybody may read. A file inside "/cfg" or "/update"
// shares its folder's fate. Their formats are in docs/files.md. Scripts get the rows from the build
// (cmake/Names.cmake).

// clang-format off
#define KORVAN_STATE_FILES(ROW) \
    ROW(kCfgFolder,        "/cfg",                        Kept,    "folder: options, login, totals, profile") \
    ROW(kOptionFile,       "/cfg/option",                 Kept,    "the options") \
    ROW(kLoginFile,        "/cfg/login",                  Kept,    "the remembered login") \
    ROW(kRefreshFile,      "/cfg/update",                 Kept,    "when the configuration is to be refreshed") \
    ROW(kTransferFile,     "/cfg/transfer",               Kept,    "the traffic totals") \
    ROW(kThemeFile,        "/cfg/theme",                  Kept,    "light or dark") \
    ROW(kLanguageFile,     "/cfg/language",               Kept,    "the language that the person chose") \
    ROW(kProxyLoginFile,   "/cfg/proxy",                  Kept,    "the proxy's login, while a connection is made") \
    ROW(kL2tpListFile,     "/cfg/L2TP.txt",               Kept,    "the L2TP servers") \
    ROW(kProfileFolder,    "/cfg/OpenVPN/",               Kept,    "folder: the OpenVPN servers, certificate, keys") \
    ROW(kSkipListFile,     "/cfg/OpenVPN/skiplist.dat",   Kept,    "servers that the ping table leaves out") \
    ROW(kProfileArchive,   "/cfg/OpenVPN/config",         Kept,    "the service's archive, while it is unpacked") \
    ROW(kLastProfileFolder, "/cfg/OpenVPN.last",          Kept,    "folder: the profile before one that does not work") \
    ROW(kProfileCopy,      "/cfg/OpenVPN/temp",           Kept,    "the profile that is connected") \
    ROW(kL2tpPasswordFile, "/l2tp",                       Kept,    "the L2TP password") \
    ROW(kGatewayFile,      "/defgate",                    Kept,    "the default gateway before lock-down") \
    ROW(kSettingsFile,     "/setting.ini",                Kept,    "what an administrator overrides") \
    ROW(kLogFile,          "/log.txt",                    Kept,    "the log") \
    ROW(kOldLogFile,       "/log",                        Passing, "a log of earlier versions, deleted at each start") \
    ROW(kSstpLogFile,      "/vpnlog.txt",                 Passing, "the SSTP client's log") \
    ROW(kUpdateFolder,     "/update",                     Passing, "folder: an update for the next start") \
    ROW(kUpdateArchive,    "/update/update.zip",          Passing, "the update itself") \
    ROW(kUpdateSignature,  "/update/update.zip.minisig",  Passing, "its signature, where updates are signed") \
    ROW(kNewUpdateFolder,  "/update.new",                 Passing, "folder: an update that is checked or installed") \
    ROW(kInstanceFile,     "/instance",                   Passing, "the lock of the running program")
// clang-format on

#define KORVAN_STATE_PATH(name, path, fate, holds) inline constexpr char name[] = path;
KORVAN_STATE_FILES(KORVAN_STATE_PATH)
#undef KORVAN_STATE_PATH

enum class StateFate {
    Kept,    ///< an update carries it over, removing the package leaves it
    Passing, ///< belongs to one run or one update of the program
};

struct StateFile
{
    const char *path;
    StateFate fate;
};

inline constexpr StateFile kStateFiles[] = {
#define KORVAN_STATE_ROW(name, path, fate, holds) {name, StateFate::fate},
    KORVAN_STATE_FILES(KORVAN_STATE_ROW)
#undef KORVAN_STATE_ROW
};
