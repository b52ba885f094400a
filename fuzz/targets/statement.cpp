#include "clinic/Tables.h"
#include "data/clsSQL.h"
#include "data/modGeneralSQL.h"
#include "desk/schema/Schema.h"
#include "fuzz/Fuzz.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"
#include "platform/ado/SqlText.h"
#include "platform/runtime/RuntimeError.h"

#include <sqlite3.h>

#include <set>
#include <string>

namespace {

/// A clinic in memory that notes what each statement sets out to do.
class Witness
{
public:
    Witness()
        : connection_(ado::Connection::open(QStringLiteral("sqlite::memory:"), true))
        , handle_(static_cast<sqlite3 *>(connection_->handle()))
    {
        clinic::registerTables();
        schema::createSchema(*connection_);
        connection_->Execute(
            QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-24')"));
        connection_->Execute(QStringLiteral("INSERT INTO tPSTransaction (tpstrans_Money) VALUES (5)"));
        sqlite3_set_authorizer(handle_, &Witness::note, this);
    }

    const ado::ConnectionPtr &connection() const { return connection_; }
    sqlite3 *handle() const { return handle_; }

    /// Runs the work and demands that it wrote into no table but that one, and that in no other way.
    template <typename Work>
    void watch(const std::string &allowed, Work work)
    {
        deeds_.clear();
        connection_->BeginTrans();
        try {
            work();
        } catch (const runtime::RuntimeError &error) {
            demand(!error.description().isEmpty(), "an error tells something");
        }
        connection_->RollbackTrans();
        for (const std::string &deed : deeds_)
            demand(deed == allowed, deed.c_str());
    }

private:
    static int note(void *self, int action, const char *first, const char *second, const char *, const char *trigger)
    {
        if (trigger) // the database's own journal of what was done
            return SQLITE_OK;
        static const std::set<int> harmless{SQLITE_READ, SQLITE_SELECT, SQLITE_FUNCTION, SQLITE_RECURSIVE,
                                            SQLITE_TRANSACTION};
        const auto text = [](const char *part) { return std::string(part ? part : ""); };
        if (!harmless.contains(action) && !(action == SQLITE_UPDATE && text(first) == "sqlite_sequence")
            && !(action == SQLITE_INSERT && text(first) == "sqlite_sequence"))
            static_cast<Witness *>(self)->deeds_.insert(std::to_string(action) + " " + text(first)
                                                        + (action == SQLITE_UPDATE ? "." + text(second) : ""));
        return SQLITE_OK;
    }

    ado::ConnectionPtr connection_;
    sqlite3 *handle_;
    std::set<std::string> deeds_;
};

/// A text that the layer takes for one statement is one to the engine, too: behind what the engine compiles stands nothing.
void compareWithTheEngine(const QString &text, sqlite3 *handle)
{
    try {
        ado::oneStatement(text, ado::Dialect::SQLite);
    } catch (const runtime::RuntimeError &error) {
        demand(!error.description().isEmpty(), "an error tells something");
        return;
    }
    const QByteArray utf8 = text.toUtf8();
    sqlite3_stmt *compiled = nullptr;
    const char *tail = nullptr;
    const int code = sqlite3_prepare_v2(handle, utf8.constData(), int(utf8.size()), &compiled, &tail);
    sqlite3_finalize(compiled);
    if (code != SQLITE_OK)
        return;
    for (; tail < utf8.constData() + utf8.size(); ++tail)
        demand(std::string(" \t\n\r\f;").find(*tail) != std::string::npos, "nothing behind the statement");
}

/// The layer's reading of PostgreSQL's literals against a plain one: outside of them stand neither ';' nor comments.
void comparePlainly(const QString &value)
{
    const QString statement = QStringLiteral("SELECT '%1'").arg(sqlEscapeQuotes(value));
    if (value.contains(QChar(0)))
        return;
    for (const ado::Dialect dialect : {ado::Dialect::SQLite, ado::Dialect::PostgreSQL}) {
        const std::vector<ado::Token> tokens = ado::oneStatement(statement, dialect);
        demand(tokens.size() == 2 && tokens[1].kind == ado::Token::Kind::Literal,
               "a doubled text is one literal everywhere");
    }
}

} // namespace

/// A value, hostile as it comes, in every place of the catalogue that takes a text.
void fuzz(const QByteArray &bytes)
{
    static Witness clinic;
    const QString value = QString::fromUtf8(bytes);
    compareWithTheEngine(value, clinic.handle());
    comparePlainly(value);
    const clsSQL catalogue;
    const auto execute = [&](const QString &statement) {
        compareWithTheEngine(statement, clinic.handle());
        clinic.connection()->Execute(statement);
    };
    const auto read = [&](const QString &statement) {
        compareWithTheEngine(statement, clinic.handle());
        ado::Recordset rows;
        rows.Open(statement, clinic.connection(), ado::CursorType::Static, ado::LockType::ReadOnly);
    };
    const std::string insert = std::to_string(SQLITE_INSERT);
    const QDate day(2026, 11, 24);
    clinic.watch(insert + " tPSOrderDetail", [&] { execute(catalogue.insDB2RfndOrderDetailSQL(1, 1, {}, -1, value)); });
    clinic.watch("", [&] { read(catalogue.getNumOfSameProdName(value)); });
    clinic.watch("", [&] { read(catalogue.getDealerSQL(value)); });
    clinic.watch(insert + " tPSTransaction", [&] {
        execute(catalogue.InsertTransactionSQL(1, day, 3, 77, 1, value, value));
        if (value.contains(QChar(0)) || value.contains(u"[MEMO]"))
            return;
        ado::Recordset row;
        row.Open(QStringLiteral("SELECT * FROM tPSTransaction WHERE tpstrans_Money = 77"), clinic.connection(),
                 ado::CursorType::Static, ado::LockType::ReadOnly);
        demand(row[QStringLiteral("tpstrans_Memo")].toString() == value, "a doubled text reaches its column whole");
    });
}
