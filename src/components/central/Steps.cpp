#include "components/central/Steps.h"

#include "clinic/ChainTables.h"
#include "components/central/Blocks.h"
#include "components/central/Plan.h"
#include "platform/ado/Transaction.h"

#include <optional>

namespace central {

namespace {

constexpr int mostAttempts = 5; ///< another desk's work in between costs one each

QStringList columnNames()
{
    QStringList names;
    for (const clinic::Column &column : clinic::chainColumns())
        names << QString::fromLatin1(column.name);
    return names;
}

/// A server takes a value that stands in a list of rows for a text.
QString asColumn(int number, ado::ColumnType holds)
{
    const QString value = QStringLiteral("v.column%1").arg(number);
    switch (holds) {
    case ado::ColumnType::Key:
        return QStringLiteral("CAST(%1 AS integer)").arg(value);
    case ado::ColumnType::Money:
        return QStringLiteral("CAST(%1 AS numeric)").arg(value);
    case ado::ColumnType::Flag:
        return QStringLiteral("CAST(%1 AS smallint)").arg(value);
    case ado::ColumnType::Date:
        return QStringLiteral("CAST(%1 AS date)").arg(value);
    default:
        return value;
    }
}

/// What goes around the rows of an UPDATE. The embedded engine makes a value what its column is by itself, and would make
/// a number of a date.
std::pair<QString, QString> aroundUpdate(bool server)
{
    QStringList settings;
    int number = 1;
    for (const clinic::Column &column : clinic::chainColumns()) {
        ++number;
        settings << QString::fromLatin1(column.name) + QStringLiteral(" = ")
                        + asColumn(number, server ? column.holds : ado::ColumnType::Text);
    }
    return {QStringLiteral("UPDATE tPSProductMaster SET %1 FROM (VALUES ").arg(settings.join(QStringLiteral(", "))),
            QStringLiteral(") AS v WHERE PM_PK = ") + asColumn(1, ado::ColumnType::Key)};
}

class Writing
{
public:
    Writing(ado::Connection &clinic, const Progress &progress)
        : clinic_(clinic)
        , progress_(progress)
    {
    }

    void write(const Plan &plan)
    {
        release(plan.released);
        Blocks added(clinic_, QStringLiteral("INSERT INTO tPSProductMaster (%1) VALUES ").arg(columnNames().join(u',')),
                     {}, progress_);
        for (const Product &product : plan.added)
            added.add(product);
        added.finish();
        const auto [before, behind] = aroundUpdate(clinic_.engine() != ado::Engine::SQLite);
        Blocks changed(clinic_, before, behind, progress_);
        for (const auto *rows : {&plan.changed, &plan.withdrawn}) {
            for (const auto &[key, product] : *rows)
                changed.add(QStringList(QString::number(key)) + product);
        }
        changed.finish();
        Blocks linked(clinic_, QStringLiteral("INSERT INTO t_CentralLink (CK_Product, CK_Central) VALUES "), {},
                      progress_);
        for (const auto &[local, central] : plan.linked)
            linked.add({QString::number(local), QString::number(central)});
        linked.finish();
    }

    void remember(const ListMark &mark)
    {
        clinic_.Execute(QStringLiteral("UPDATE t_CentralLink AS k SET %1 FROM tPSProductMaster p WHERE p.PM_PK = "
                                       "k.CK_Product AND (%2)")
                            .arg(clinic::chainNoteSettings(), clinic::chainNoteDiffers()));
        ado::Command command = clinic_.command();
        command << u"UPDATE t_CentralState SET CS_List = ";
        command.value(mark.list) << u", CS_Revision = ";
        command.value(mark.revision) << u" WHERE CS_Key = 1";
        clinic_.Execute(command);
    }

private:
    void release(const std::vector<qint32> &keys)
    {
        if (!keys.empty()) // of another list, then all of them are
            clinic_.Execute(QStringLiteral("DELETE FROM t_CentralLink"));
    }

    ado::Connection &clinic_;
    const Progress &progress_;
};

/// Nothing when another desk was at it since that reading.
std::optional<Brought> follow(ado::Connection &clinic, const Offer &offer, const ListMark &readFrom,
                              const Progress &progress)
{
    const ado::AbandonedTransactions another; // owner than the host, who may stand in a transaction
    ado::Transaction scope(clinic);
    if (!clinic.holdRow(QStringLiteral("t_CentralState"), QStringLiteral("CS_Key"), 1) || markOf(clinic) != readFrom)
        return std::nullopt;
    if (offer.whole)
        clinic.Execute(QStringLiteral("DELETE FROM t_CentralLink WHERE CK_Product NOT IN (SELECT PM_PK FROM "
                                      "tPSProductMaster)"));
    Writing writing(clinic, progress);
    Plan plan = planOf(offer, LocalList::read(clinic, offer), clinic::isSameChainList(offer.mark.list, readFrom.list));
    const Brought brought{qsizetype(plan.added.size()), qsizetype(plan.changed.size()),
                          qsizetype(plan.withdrawn.size())};
    writing.write(plan);
    if (!plan.added.empty()) // their keys are known now
        writing.write(planOf(offer, LocalList::read(clinic, offer), true));
    writing.remember(offer.mark);
    scope.commit();
    return brought;
}

} // namespace

bool isInStep(const ado::Connection &clinic, const HeadOffice &headOffice)
{
    const ListMark theirs = headOffice.mark(); // whether it can be reached comes first
    return hasLinks(clinic) && markOf(clinic) == theirs && !hasStrayed(clinic);
}

Brought bringIntoStep(ado::Connection &clinic, const HeadOffice &headOffice, const Progress &progress)
{
    if (!hasLinks(clinic))
        makeLinks(clinic);
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const ListMark ours = markOf(clinic);
        const Offer offer = headOffice.offer(hasStrayed(clinic) ? ListMark{} : ours, progress);
        if (const std::optional<Brought> brought = follow(clinic, offer, ours, progress))
            return *brought;
    }
    ado::raiseConflict();
}

} // namespace central
