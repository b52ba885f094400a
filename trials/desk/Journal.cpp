#include "trials/desk/Journal.h"

#include <QFile>

#include <chrono>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace trial {

namespace {

QByteArray written(const Numbers &numbers)
{
    QByteArray text;
    for (const auto &[name, value] : numbers)
        text += ' ' + name + '=' + QByteArray::number(value);
    return text;
}

void read(Numbers &numbers, const QList<QByteArray> &words, qsizetype from)
{
    for (qsizetype at = from; at < words.size(); ++at) {
        const qsizetype sign = words[at].indexOf('=');
        if (sign > 0)
            numbers[words[at].first(sign)] = words[at].sliced(sign + 1).toLongLong();
    }
}

void read(std::vector<Deed> &deeds, const QList<QByteArray> &words, int desk)
{
    const auto serial = std::size_t(words[1].toULongLong());
    if (words[0] == "begin" && words.size() > 3) {
        Deed deed;
        deed.kind = words[3];
        deed.begun = words[2].toLongLong();
        deed.desk = desk;
        read(deed.numbers, words, 4);
        deeds.push_back(std::move(deed));
    } else if (serial >= 1 && serial <= deeds.size()) {
        Deed &deed = deeds[serial - 1];
        if (words[0] == "note")
            return read(deed.numbers, words, 2);
        deed.ended = words[2].toLongLong();
        deed.state = words[0] == "done" ? State::Done : State::Refused;
        if (deed.state == State::Refused)
            deed.reason = QString::fromUtf8(words.sliced(3).join(' '));
    }
}

} // namespace

qint64 now()
{
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(since).count();
}

Journal::Journal(const QString &file)
    : file_(::open(QFile::encodeName(file).constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644))
{
    if (file_ < 0)
        throw std::runtime_error("no journal: " + file.toStdString());
}

Journal::~Journal()
{
    ::close(file_);
}

void Journal::begin(const char *kind, const Numbers &numbers)
{
    ++serial_;
    write("begin " + QByteArray::number(serial_) + ' ' + QByteArray::number(now()) + ' ' + kind + written(numbers));
}

void Journal::done()
{
    write("done " + QByteArray::number(serial_) + ' ' + QByteArray::number(now()));
}

void Journal::refused(const QString &why)
{
    write("refused " + QByteArray::number(serial_) + ' ' + QByteArray::number(now()) + ' ' + why.simplified().toUtf8());
}

void Journal::note(const Numbers &numbers)
{
    write("note " + QByteArray::number(serial_) + written(numbers));
}

void Journal::write(const QByteArray &line)
{
    const QByteArray whole = line + '\n';
    if (::write(file_, whole.constData(), std::size_t(whole.size())) != whole.size())
        throw std::runtime_error("the journal cannot be written");
}

std::vector<Deed> readJournal(const QString &file, int desk)
{
    std::vector<Deed> deeds;
    QFile lines(file);
    if (!lines.open(QIODevice::ReadOnly))
        return deeds;
    while (!lines.atEnd()) {
        const QByteArray line = lines.readLine();
        const QList<QByteArray> words = line.trimmed().split(' ');
        if (line.endsWith('\n') && words.size() >= 3)
            read(deeds, words, desk);
    }
    return deeds;
}

} // namespace trial
