#pragma once

#include "desk/sample/Clinic.h"
#include "tests/support/PostgresServer.h"

#include <QCommandLineParser>

#include <memory>
#include <stdexcept>

namespace trial {

/// The arguments that the trials share: an engine, a size, and numbers with what they are when not given.
class Options
{
public:
    Options(const QCoreApplication &application, const std::vector<std::pair<QString, int>> &numbers)
    {
        parser_.addHelpOption();
        parser_.addPositionalArgument(QStringLiteral("engine"), QStringLiteral("sqlite, postgresql or mariadb"));
        parser_.addOption({QStringLiteral("orders"), QStringLiteral("320, 10000, 100000 or 1000000"),
                           QStringLiteral("number"), QStringLiteral("320")});
        parser_.addOption({QStringLiteral("at"), QStringLiteral("an empty database of a server that is there"),
                           QStringLiteral("address")});
        parser_.addOption({QStringLiteral("desks-at"), QStringLiteral("where the desks find it, as by a pooler"),
                           QStringLiteral("address")});
        for (const auto &[name, usual] : numbers)
            parser_.addOption({name, {}, QStringLiteral("number"), QString::number(usual)});
        parser_.process(application);
    }

    int number(const char *name) const { return parser_.value(QLatin1String(name)).toInt(); }

    /// Empty where it is not given.
    QString text(const char *name) const { return parser_.value(QLatin1String(name)); }

    ado::Engine engine() const
    {
        const QString name = parser_.positionalArguments().value(0);
        for (const auto &[known, engine] : {std::pair("sqlite", ado::Engine::SQLite),
                                            {"postgresql", ado::Engine::PostgreSQL},
                                            {"mariadb", ado::Engine::MariaDB}}) {
            if (name == QLatin1String(known))
                return engine;
        }
        throw std::runtime_error("name an engine: sqlite, postgresql or mariadb");
    }

    sample::Size size() const
    {
        switch (number("orders")) {
        case 320:
            return sample::Size::Small;
        case 10'000:
            return sample::Size::Hundredth;
        case 100'000:
            return sample::Size::Tenth;
        case 1'000'000:
            return sample::Size::Large;
        default:
            throw std::runtime_error("clinics have 320, 10000, 100000 or 1000000 orders");
        }
    }

    /// A PostgreSQL server that writes as a clinic's does; none for the other engines.
    std::unique_ptr<PostgresServer> server() const
    {
        return engine() == ado::Engine::PostgreSQL && text("at").isEmpty()
                   ? std::make_unique<PostgresServer>(PostgresServer::Writing::Durable)
                   : nullptr;
    }

private:
    QCommandLineParser parser_;
};

} // namespace trial
