#pragma once

#include <QString>
#include <QWidget>

namespace controls {

/// Asks which file to read. Empty when the user cancelled, or when the owner went while the dialog stood. A typed name may
/// be one of a file that does not exist.
QString askOpenFile(QWidget *owner, const QString &title, const QString &filter);

/// Asks where to save, beginning in the user's documents with that name, and whether to replace a file of that name. Empty as above. A name without the suffix gets
/// it, a dot before.
QString askSaveFile(QWidget *owner, const QString &title, const QString &proposal, const QString &filter,
                    const QString &suffix);

} // namespace controls
