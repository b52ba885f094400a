#pragma once

#include "desk/sample/Clinic.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>

namespace desk {

/// What the program was asked for.
struct Options
{
    QString database; ///< an address; empty when none was given
    std::optional<sample::Size> make;
    std::optional<int> patient; ///< Customer_PK
    bool manage = false;
    QString walkFolder; ///< empty unless a walk was asked for
    bool check = false;
    QString backupFile;       ///< to write; empty unless asked for
    QString restoreFile;      ///< to read; empty unless asked for
    QString verifyFile;       ///< to read; empty unless asked for
    QString copyTo;           ///< an address; empty unless asked for
    QString importFile;       ///< to read; empty unless asked for
    QString exportFile;       ///< to write; empty unless asked for
    std::optional<int> order; ///< with restoreFile, which may be the word "journal"
    bool all = false;         ///< with restoreFile: the host's tables as well
    bool upgrade = false;     ///< the backup that goes before may be named by backupFile
    bool dryRun = false;      ///< with upgrade or importFile
    bool lockDown = false;    ///< with upgrade
    QString central;          ///< the head office's address; empty unless asked for
    bool headOffice = false;
    std::optional<QString> set; ///< "KEY=VALUE"; empty: to list them
    bool untilShown = false;    ///< ends when the first window is painted
    bool help = false;
    bool version = false;
};

/// Options that cannot be followed; the text tells the user why.
class WrongUse : public std::runtime_error
{
public:
    explicit WrongUse(const QString &why)
        : std::runtime_error(why.toStdString())
    {
    }
};

/// Reads the arguments after the program's name. Raises WrongUse.
Options readCommandLine(const QStringList &arguments);
/// The one task on a database that was asked for; empty for none. Raises WrongUse for two.
QString taskOf(const Options &options);
QString usageText();

/// The small clinic's file in the user's data folder.
QString defaultDatabase();

} // namespace desk
