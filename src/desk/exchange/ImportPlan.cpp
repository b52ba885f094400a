#include "desk/exchange/ImportPlan.h"

#include "desk/exchange/StoredRows.h"
#include "desk/schema/Statements.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"

#include <algorithm>
#include <map>
#include <set>

namespace exchange {

namespace {

constexpr std::size_t MostRefusals = 20;

QString caption(const Field &field)
{
    return QString::fromUtf8(field.caption);
}

/// For the eye: money in groups.
QString shown(const Field &field, const QVariant &value)
{
    if (!value.isValid())
        return QStringLiteral("(없음)");
    return field.reads == Reads::Money ? runtime::Format(value, QStringLiteral("#,##0")) + QStringLiteral("원")
                                       : cellOf(field, value);
}

/// What a text means, whoever wrote its line ends and the blanks around it.
QString comparable(const QVariant &text)
{
    return runtime::Trim(text.toString()).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

bool isSame(const Field &field, const QVariant &stored, const QVariant &read)
{
    if (field.reads == Reads::Text || field.reads == Reads::Memo)
        return comparable(stored) == comparable(read);
    return stored == read;
}

/// A line of the file as it was read.
struct Line
{
    int number;
    QVariantList values; ///< of the plan's columns
};

/// Makes a plan of a file's lines, and collects what cannot be taken.
class Planner
{
public:
    Planner(ado::Connection &connection, const Header &header, const std::vector<Record> &records)
        : header_(header)
        , subject_(*header_.subject)
    {
        plan_.subject = &subject_;
        for (const Field *field : header_.fields) {
            if (field)
                plan_.columns.push_back(field);
        }
        // Behind those that the file has: what a new row gets besides.
        told_ = plan_.columns.size();
        for (const Field &field : subject_.fields) {
            if (*field.whenNew && !header_.has(field.column))
                plan_.columns.push_back(&field);
        }
        plan_.differs.assign(plan_.columns.size(), false);
        for (std::size_t at = 1; at < records.size(); ++at)
            readLine(records[at]);
        for (const Line &line : lines_)
            ++linesOfName_[nameOf(line)];
        const StoredRows stored(connection, subject_, plan_.columns);
        for (const Line &line : lines_)
            place(line, stored);
        demandNoRefusal();
    }

    ImportPlan plan() && { return std::move(plan_); }

private:
    void refuseLine(int line, const QString &why) { refusals_ << QStringLiteral("  %1번째 줄: %2").arg(line).arg(why); }

    void refuseTwice(const Line &line)
    {
        refuseLine(
            line.number,
            QStringLiteral("파일에 두 번 있는 %1입니다: %2").arg(QString::fromUtf8(subject_.what), nameOf(line)));
    }

    void readLine(const Record &record)
    {
        Line line{record.line, {}};
        const auto known = qsizetype(header_.fields.size());
        bool fine = true;
        for (qsizetype at = 0; at < std::max(record.cells.size(), known); ++at) {
            const Field *field = at < known ? header_.fields[std::size_t(at)] : nullptr;
            const QString cell = record.cells.value(at);
            try {
                if (field)
                    line.values << valueOf(*field, cell);
                else if (!cell.trimmed().isEmpty())
                    schema::refuse(
                        QStringLiteral("머리글이 없는 칸에 값이 있습니다. 쉼표가 든 값은 큰따옴표로 묶으십시오"));
            } catch (const runtime::RuntimeError &error) {
                refuseLine(record.line, QStringLiteral("%1%2: %3")
                                            .arg(field ? caption(*field) + QStringLiteral(": ") : QString(),
                                                 error.description(), cell.left(40)));
                fine = false;
            }
        }
        if (fine && !valueAt(line, subject_.name).isValid()) {
            refuseLine(record.line, caption(*subject_.field(subject_.name)) + QStringLiteral(" 칸이 비어 있습니다."));
            fine = false;
        }
        if (fine)
            lines_.push_back(std::move(line));
    }

    int placeOf(const char *column) const
    {
        for (std::size_t at = 0; at < plan_.columns.size(); ++at) {
            if (qstrcmp(plan_.columns[at]->column, column) == 0)
                return int(at);
        }
        return -1;
    }
    QVariant valueAt(const Line &line, const char *column) const { return line.values.value(placeOf(column)); }
    QString nameOf(const Line &line) const { return valueAt(line, subject_.name).toString(); }
    /// Empty where the file does not tell.
    QString groupOf(const QVariantList &values) const
    {
        const int at = placeOf(subject_.group);
        return at < 0 || at >= int(told_) ? QString() : runtime::Trim(values.value(at).toString());
    }

    bool changesNothing(const Line &line, const StoredRow &row) const
    {
        for (std::size_t at = 0; at < told_; ++at) {
            const Field &field = *plan_.columns[at];
            const QVariant read = line.values.value(qsizetype(at));
            if (isLeft(field, read))
                continue;
            if (!isSame(field, row.values[qsizetype(at)], read))
                return false;
        }
        return true;
    }
    /// An empty cell leaves what is there, but that a memo is emptied by it.
    static bool isLeft(const Field &field, const QVariant &read)
    {
        return !read.isValid() && field.reads != Reads::Memo;
    }

    /// Which row a line is about; one that is there twice and differs is refused.
    void place(const Line &line, const StoredRows &stored)
    {
        const QString name = nameOf(line), group = groupOf(line.values);
        std::vector<const StoredRow *> called = stored.called(name);
        const bool same = std::ranges::any_of(called, [&](const StoredRow *row) { return changesNothing(line, *row); });
        // Lines of which none changes anything may stand there as often as the rows do.
        const auto [before, first] = seen_.emplace(std::pair(name, group), !same);
        if (!first && (before->second || !same))
            return refuseTwice(line);
        if (same) {
            ++plan_.same;
            return;
        }
        if (!group.isEmpty()) {
            std::vector<const StoredRow *> together;
            std::ranges::copy_if(called, std::back_inserter(together),
                                 [&](const StoredRow *row) { return groupOf(row->values) == group; });
            // One that stands alone under its name has moved to another group; of several each is its own.
            if (!together.empty() || linesOfName_.value(name) > 1)
                called = together;
        }
        if (called.size() > 1)
            return refuseLine(line.number, QStringLiteral("같은 이름이 데이터베이스에 %1개 있어 어느 것인지 알 수 "
                                                          "없습니다: %2")
                                               .arg(called.size())
                                               .arg(name));
        if (called.empty())
            add(line);
        else
            change(line, *called.front());
    }

    void add(const Line &line)
    {
        for (const char *needed : subject_.needed) {
            const int at = placeOf(needed);
            const Field &field = *subject_.field(needed);
            if (at < 0 || at >= int(told_) || (field.reads == Reads::Text && !line.values[at].isValid()))
                return refuseLine(line.number, QStringLiteral("새 %1에 필요한 값이 없습니다: %2")
                                                   .arg(QString::fromUtf8(subject_.what), caption(field)));
        }
        Change change{line.number, 0, line.values, {}};
        QStringList words{QStringLiteral("추가")};
        for (std::size_t at = 0; at < plan_.columns.size(); ++at) {
            const Field &field = *plan_.columns[at];
            if (at >= told_)
                change.values << QVariant();
            QVariant &value = change.values[qsizetype(at)];
            if (!value.isValid() && *field.whenNew)
                value = valueOf(field, QString::fromUtf8(field.whenNew));
            if (value.isValid())
                words << caption(field) + u' ' + shown(field, value);
        }
        change.told = words.join(QStringLiteral(" · "));
        plan_.added.push_back(std::move(change));
    }

    void change(const Line &line, const StoredRow &row)
    {
        if (!taken_.insert(row.key).second)
            return refuseTwice(line);
        Change change{line.number, row.key, row.values, {}};
        QStringList words{QStringLiteral("수정"), nameOf(line)};
        for (std::size_t at = 0; at < told_; ++at) {
            const Field &field = *plan_.columns[at];
            const QVariant &before = row.values[qsizetype(at)];
            const QVariant read = line.values.value(qsizetype(at));
            if (isLeft(field, read) || isSame(field, before, read))
                continue;
            change.values[qsizetype(at)] = read.isValid() ? read : QVariant(QString());
            plan_.differs[at] = true;
            words << QStringLiteral("%1 %2 → %3").arg(caption(field), shown(field, before), shown(field, read));
        }
        change.told = words.join(QStringLiteral(" · "));
        plan_.changed.push_back(std::move(change));
    }

    void demandNoRefusal() const
    {
        if (refusals_.isEmpty())
            return;
        QStringList told = refusals_.mid(0, MostRefusals);
        if (refusals_.size() > qsizetype(MostRefusals))
            told << QStringLiteral("  … 모두 %1건").arg(refusals_.size());
        schema::refuse(QStringLiteral("가져올 수 없는 줄이 있어 아무것도 저장하지 않았습니다. 수정한 뒤 다시 "
                                      "시도하십시오.\n")
                       + told.join(u'\n'));
    }

    const Header &header_;
    const Subject &subject_;
    ImportPlan plan_;
    std::size_t told_ = 0; ///< of the plan's columns, those that the file has
    std::vector<Line> lines_;
    QHash<QString, int> linesOfName_;
    std::map<std::pair<QString, QString>, bool> seen_; ///< by name and group, whether a line changes something
    std::set<qint64> taken_;
    QStringList refusals_;
};

} // namespace

ImportPlan planImport(ado::Connection &connection, const Header &header, const std::vector<Record> &records)
{
    return Planner(connection, header, records).plan();
}

} // namespace exchange
