#include "desk/backup/Backup.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"
#include "tests/faults/Desk.h"
#include "tests/faults/FaultyDisk.h"
#include "tests/faults/PlainFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <algorithm>
#include <map>
#include <random>

using faults::Deed;

namespace {

constexpr qint64 Sector = 512;

void write(QByteArray &content, qint64 at, QByteArrayView bytes)
{
    if (content.size() < at + bytes.size())
        content.resize(at + bytes.size(), '\0');
    std::ranges::copy(bytes, content.begin() + at);
}

void carryOut(QByteArray &content, const Deed &deed)
{
    if (deed.kind == Deed::Truncate)
        content.resize(deed.at, '\0');
    else
        write(content, deed.at, deed.bytes);
}

/// One file of a disk: what surely is there, and what was done since.
struct OnDisk
{
    QByteArray synced;
    std::vector<const Deed *> since;

    void take(const Deed &deed)
    {
        if (deed.kind != Deed::Sync)
            return since.push_back(&deed);
        for (const Deed *done : since)
            carryOut(synced, *done);
        since.clear();
    }
    /// After the power: some of it, in any order, of a writing perhaps some sectors.
    QByteArray afterCut(std::mt19937 &random) const
    {
        QByteArray content = synced;
        std::vector<const Deed *> survivors = since;
        std::ranges::shuffle(survivors, random);
        for (const Deed *deed : survivors) {
            const unsigned fate = random() % 3;
            if (fate == 0)
                continue;
            if (fate == 1 || deed->kind == Deed::Truncate) {
                carryOut(content, *deed);
                continue;
            }
            for (qint64 from = 0; from < deed->bytes.size(); from += Sector) {
                if (random() % 2)
                    write(content, deed->at + from, deed->bytes.mid(from, Sector));
            }
        }
        return content;
    }
};

/// A day's work with all that reached the disk's layer, and the stands after each acknowledgement.
class PowerCut : public testing::Test
{
protected:
    PowerCut()
    {
        makeClinic(clinic_);
        QFile file(clinic_);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        before_ = file.readAll();
        stands_ = {{0, standOf(clinic_)}};
    }
    ~PowerCut() override { faults::record(nullptr); }

    struct Stand
    {
        std::size_t since; ///< deeds before it was acknowledged, or committed
        QByteArray rows;
        bool acknowledged = true;
    };

    void note(bool acknowledged) { stands_.push_back({deeds_.size(), standOf(clinic_), acknowledged}); }
    void work()
    {
        Desk desk(clinic_);
        sqlite3 *const handle = static_cast<sqlite3 *>(gcnnMasterDB->handle());
        const auto committed = [](void *own, sqlite3 *at, const char *, int pages) {
            static_cast<PowerCut *>(own)->note(false);
            // The log is played into the file now and then, more often than in a clinic.
            return pages < 40 ? SQLITE_OK
                              : sqlite3_wal_checkpoint_v2(at, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
        };
        sqlite3_wal_hook(handle, committed, this);
        for (const Work &one : works()) {
            desk.readAnew();
            try {
                one.run(desk);
            } catch (const runtime::RuntimeError &) { // its row went with an earlier work
            }
            gcnnMasterDB->RollbackTrans();
            note(true);
        }
    }

    /// What stands in the clinic when the power goes after that many deeds.
    QByteArray standAfter(const std::map<QString, OnDisk> &disk, unsigned seed)
    {
        std::mt19937 random(seed);
        const QString cut = folder_.filePath(QStringLiteral("cut.db"));
        for (const char *suffix : {"", "-wal", "-shm", "-journal"}) {
            QFile file(cut + QLatin1String(suffix));
            file.remove();
            const auto left = disk.find(clinic_ + QLatin1String(suffix));
            if (left == disk.end())
                continue;
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(left->second.afterCut(random));
        }
        return standOf(cut);
    }
    bool mayStand(const QByteArray &rows, std::size_t deeds) const
    {
        auto last = stands_.begin();
        for (auto stand = stands_.begin(); stand != stands_.end() && stand->since <= deeds; ++stand)
            if (stand->acknowledged)
                last = stand;
        // What was being done may have come through, as far as its next acknowledgement.
        for (; last != stands_.end(); ++last) {
            if (last->rows == rows)
                return true;
            if (last->since > deeds)
                return false;
        }
        return false;
    }

    const QTemporaryDir folder_;
    const QString clinic_ = folder_.filePath(QStringLiteral("clinic.db"));
    QByteArray before_;
    std::vector<Deed> deeds_;
    std::vector<Stand> stands_;
};

} // namespace

TEST_F(PowerCut, LosesNothingThatWasAcknowledgedAndLeavesNoHalfStep)
{
    const QString good = folder_.filePath(QStringLiteral("good.backup"));
    backup::backUp(QStringLiteral("sqlite:") + clinic_, good);
    faults::record(&deeds_);
    work();
    backup::restore(QStringLiteral("sqlite:") + clinic_, good);
    note(true);
    faults::record(nullptr);

    const bool all = qEnvironmentVariable("ZELVO_FAULTS") == QLatin1String("all");
    std::map<QString, OnDisk> disk{{clinic_, {before_, {}}}};
    int cuts = 0;
    for (std::size_t at = 0; at < deeds_.size(); ++at) {
        const Deed &deed = deeds_[at];
        if (deed.kind == Deed::Delete)
            disk.erase(deed.file);
        else
            disk[deed.file].take(deed);
        for (unsigned seed = 0; seed < (all ? 8U : at % 2); ++seed) {
            ++cuts;
            const QByteArray rows = standAfter(disk, unsigned(at) * 8 + seed);
            ASSERT_TRUE(mayStand(rows, at + 1))
                << "cut after " << at + 1 << " of " << deeds_.size() << ", " << seed << "\n"
                << rows.toStdString();
        }
    }
    RecordProperty("cuts", cuts);
    std::printf("%d power cuts\n", cuts);
}
