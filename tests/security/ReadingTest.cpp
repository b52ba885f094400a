#include "platform/ado/Recordset.h"
#include "platform/ado/SqlText.h"
#include "platform/runtime/Attempt.h"
#include "tests/support/Cases.h"
#include "tests/support/PostgresServer.h"
#include "tests/support/TestDatabase.h"

#include <libpq-fe.h>

#include <memory>
#include <random>

// What the layer reads as one statement is one to the server, whatever a session's settings say. docs/security.md says so.

namespace {

/// Texts of the signs by which a literal, a name or a statement begins and ends, in a disorder of which the server
/// understands a good part.
class HostileTexts
{
public:
    explicit HostileTexts(unsigned seed)
        : random_(seed)
    {
    }

    QString next()
    {
        QString text = QStringLiteral("SELECT ");
        for (unsigned piece = random_() % 3 + 1; piece > 0; --piece) {
            const QStringList &quote = quotes_[qsizetype(random_() % std::size_t(quotes_.size()))];
            text += quote[0];
            for (unsigned part = random_() % 3; part > 0; --part)
                text += any(bodies);
            text += random_() % 3 == 0 ? any(bodies) : quote[1];
            text += piece > 1 ? any(joints) : any(ends);
        }
        return text;
    }

    /// One literal, filled with the signs that end it under one setting and not under another.
    QString nextRemark()
    {
        QString text = QStringLiteral("SELECT '");
        for (unsigned part = random_() % 5 + 1; part > 0; --part)
            text += any(remarks);
        return text + any(ends);
    }

private:
    template <std::size_t Count>
    QString any(const char16_t *const (&among)[Count])
    {
        return QString::fromUtf16(among[random_() % Count]);
    }

    static QList<QStringList> allQuotes()
    {
        QList<QStringList> all = casesOf("security/quotes.cases", 2);
        all << QStringList{QChar(0xd800) + QStringLiteral("E'"), QStringLiteral("'")}; // half a character
        return all;
    }
    const QList<QStringList> quotes_ = allQuotes();
    static constexpr const char16_t *bodies[]{
        u"a",    u"\\",         u"\\'", u"''", u"'",  u"\\\\", u"$$",     u"$a$",        u"\"",
        u"'\n'", u"'\r '",      u"--",  u"/*", u"*/", u"\n",   u"\uc815", u"; SELECT 2", u"\\''; SELECT 2",
        u"}",    u"; SELECT '",
    };
    static constexpr const char16_t *remarks[]{u"a",   u"\\",   u"'",          u"''",
                                               u"\\'", u"\\''", u"; SELECT 2", u"; SELECT 2 --"};
    static constexpr const char16_t *joints[]{u" ", u"||", u", ", u"\n", u"", u"; SELECT ", u"\t", u"::text, "};
    static constexpr const char16_t *ends[]{u"", u"", u"'", u" --", u" --'", u" $$", u"; SELECT 2", u"; SELECT 2 --'"};

    std::mt19937 random_;
};

struct CloseServer
{
    void operator()(PGconn *server) const { PQfinish(server); }
    void operator()(PGresult *result) const { PQclear(result); }
};

/// A server asked past the layer how many statements it reads in a text. None is run.
class Reader
{
public:
    explicit Reader(const QString &address)
        : server_(PQconnectdb(address.toUtf8().constData()))
    {
    }

    void set(const char *name, const char *value)
    {
        const std::string statement = std::string("SET ") + name + " = " + value;
        const Result done(PQexec(server_.get(), statement.c_str()));
        ASSERT_EQ(PQresultStatus(done.get()), PGRES_COMMAND_OK) << PQerrorMessage(server_.get());
    }

    enum class Sees { One, Several, Nonsense };
    Sees reads(const QString &text)
    {
        const Result prepared(PQprepare(server_.get(), "", text.toUtf8().constData(), 0, nullptr));
        if (PQresultStatus(prepared.get()) == PGRES_COMMAND_OK)
            return Sees::One;
        const std::string refusal = PQresultErrorMessage(prepared.get());
        return refusal.find("multiple commands") != std::string::npos ? Sees::Several : Sees::Nonsense;
    }

private:
    using Result = std::unique_ptr<PGresult, CloseServer>;
    std::unique_ptr<PGconn, CloseServer> server_;
};

bool isOneToTheLayer(const QString &text)
{
    runtime::Attempt attempt;
    attempt([&] { ado::oneStatement(text, ado::Dialect::PostgreSQL); });
    return !attempt.failed();
}

const QString readsOtherwise = QStringLiteral("SELECT set_config('standard_conforming_strings', 'off', false)");

} // namespace

TEST(Reading, OfATextAsOneStatementIsTheServersUnderEverySetting)
{
    const struct
    {
        const char *literals, *backslashQuote, *encoding;
    } settings[]{
        {"on", "safe_encoding", "UTF8"},
        {"on", "on", "UTF8"},
        {"on", "off", "UTF8"},
        {"off", "on", "UTF8"},
        {"off", "off", "UTF8"},
        {"off", "on", "SJIS"},
        {"on", "on", "BIG5"},
        {"on", "on", "GBK"},
        {"off", "on", "GB18030"},
        {"on", "on", "JOHAB"},
        {"off", "on", "UHC"},
        {"on", "on", "EUC_KR"},
        {"off", "off", "LATIN1"},
        {"off", "safe_encoding", "SJIS"},
    };
    TestDatabase clinic(ado::Engine::PostgreSQL, false);
    for (const auto &setting : settings) {
        Reader server(clinic.address());
        server.set("client_min_messages", "error");
        server.set("backslash_quote", setting.backslashQuote);
        server.set("standard_conforming_strings", setting.literals);
        server.set("client_encoding", setting.encoding);
        const bool asUsual = qstrcmp(setting.literals, "on") == 0 && qstrcmp(setting.encoding, "UTF8") == 0;
        int ones = 0, several = 0;
        HostileTexts texts(20261125);
        for (int number = 0; number < 8'000; ++number) {
            const QString text = texts.next();
            // Under other settings no text with a backslash is sent.
            const bool sent = isOneToTheLayer(text) && (asUsual || !text.contains(u'\\'));
            const Reader::Sees seen = server.reads(text);
            ones += sent && seen == Reader::Sees::One;
            several += seen == Reader::Sees::Several;
            ASSERT_FALSE(sent && seen == Reader::Sees::Several)
                << setting.literals << ' ' << setting.encoding << ": " << text.toStdString();
        }
        EXPECT_GT(ones, 150) << setting.literals << ' ' << setting.encoding;
        EXPECT_GT(several, 150) << setting.literals << ' ' << setting.encoding;
    }
}

class ReadingOfAServer : public testing::TestWithParam<ado::Engine>
{
protected:
    TestDatabase clinic_{GetParam(), false};
    const ado::ConnectionPtr &desk_ = clinic_.connection();
};
INSTANTIATE_TEST_SUITE_P(Engines, ReadingOfAServer, testing::Values(ado::Engine::PostgreSQL, ado::Engine::Odbc),
                         engineName);

TEST_P(ReadingOfAServer, LeavesNoRoomForASecondStatementWhenASessionChangesIt)
{
    clinic_.run("CREATE TABLE ledger (won integer)");
    clinic_.run("INSERT INTO ledger VALUES (1), (2)");
    HostileTexts texts(20261126);
    int run = 0;
    for (int number = 0; number < 3'000; ++number) {
        const QString text =
            texts.nextRemark().replace(QStringLiteral("; SELECT 2"), QStringLiteral("; DELETE FROM ledger"));
        runtime::Attempt settings, hostile;
        settings([&] { desk_->Execute(readsOtherwise); });
        hostile([&] { desk_->Execute(text); });
        run += !hostile.failed();
        ASSERT_EQ(clinic_.value("SELECT SUM(won) FROM ledger"), QStringLiteral("3")) << text.toStdString();
    }
    EXPECT_GT(run, 30);
}

TEST_P(ReadingOfAServer, IsPutRightAfterARefusal)
{
    const QString backslash = QStringLiteral(R"(SELECT 'a\b' AS text)");
    const auto refusal = [&](const QString &statement) {
        runtime::Attempt attempt;
        attempt([&] { desk_->Execute(statement); });
        return attempt.description().toStdString();
    };
    for (const bool inTransaction : {false, true}) {
        SCOPED_TRACE(inTransaction);
        if (inTransaction)
            desk_->BeginTrans();
        desk_->Execute(readsOtherwise);
        EXPECT_NE(refusal(backslash), "");
        desk_->RollbackTrans();
        EXPECT_EQ(refusal(backslash), "");
        EXPECT_EQ(desk_->read(backslash).raw(0, 0), QVariant(R"(a\b)"));
    }
}
