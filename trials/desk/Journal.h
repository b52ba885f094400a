#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <cstdint>
#include <map>
#include <vector>

/// What a desk without a screen did, written so that it survives the death of its process: each line is handed to the
/// operating system before the desk goes on.
///
///     begin 7 1234567 sell cust=5 order=80 token=1000007
///     done 7 1239567
///     note 7 order=81
namespace trial {

using Numbers = std::map<QByteArray, qint64>;

/// Microseconds of a clock that all processes of the machine share.
qint64 now();

enum class State {
    Open,    ///< begun, and nothing more is known: the desk died in it
    Done,    ///< acknowledged to the user
    Refused, ///< told to the user as failed
};

/// One operation of a desk.
struct Deed
{
    QByteArray kind;
    Numbers numbers;
    qint64 begun = 0; ///< microseconds, as now()
    qint64 ended = 0;
    State state = State::Open;
    QString reason; ///< of a refusal
    int desk = 0;   ///< index of the journal

    qint64 number(const char *name) const
    {
        const auto found = numbers.find(name);
        return found == numbers.end() ? 0 : found->second;
    }
};

class Journal
{
public:
    /// Raises std::runtime_error when the file cannot be made.
    explicit Journal(const QString &file);
    ~Journal();
    Journal(const Journal &) = delete;
    Journal &operator=(const Journal &) = delete;

    void begin(const char *kind, const Numbers &numbers);
    void done();
    void refused(const QString &why);
    /// More about the operation that ended last.
    void note(const Numbers &numbers);

private:
    void write(const QByteArray &line);

    int file_;
    int serial_ = 0;
};

/// The operations of a journal in the order of their beginnings; a line that was cut off is passed over.
std::vector<Deed> readJournal(const QString &file, int desk);

} // namespace trial
