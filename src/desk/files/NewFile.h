#pragma once

#include <QFile>
#include <QString>

namespace files {

/// A file that comes to stand under its name when it is whole and on the disk, and not before: meanwhile it has a name
/// beside it that nobody else uses, and it goes with the object. Nothing that is there already is replaced or removed, and
/// no name is given beside which parts of another database lie: their engine would play them into the file.
///
/// Everything raises RuntimeError.
class NewFile
{
public:
    /// For its owner only, as what holds patients should be.
    static constexpr QFile::Permissions Private = QFile::ReadOwner | QFile::WriteOwner;
    /// For whom the user lets read and write his new files.
    static constexpr QFile::Permissions AsUsual =
        Private | QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;

    NewFile(const QString &target, QFile::Permissions permissions);
    ~NewFile();
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    /// The name to write to; an empty file is there.
    const QString &unfinished() const { return unfinished_; }
    /// What an engine keeps beside the file: another database's, or put there to belong to this one.
    enum class Companions { Foreign, Mine };
    /// Gives it its name, once everything that had it open has closed it.
    void finish(Companions beside = Companions::Foreign);

private:
    const QString target_;
    const QFile::Permissions permissions_;
    QString unfinished_;
};

/// What a private file may grant that comes from this one: no more than this one grants its owner.
QFile::Permissions privateAs(const QString &source);

/// What an embedded engine keeps beside a file of that name.
QStringList companionsOf(const QString &file);

/// Onto the disk, with the name. Folders need it where the system says so.
void syncFile(const QString &file);
void syncFolderOf(const QString &file);

} // namespace files
