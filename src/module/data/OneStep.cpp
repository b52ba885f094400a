#include "data/OneStep.h"

#include "platform/ado/Recordset.h"

OneStep::OneStep(ado::Connection &connection)
    : connection_(connection)
{
    if (!connection.inTransaction())
        own_.emplace(connection);
}

void OneStep::end()
{
    if (own_)
        own_->commit();
}

void OneStep::endWith(const QString &statement)
{
    if (own_)
        own_->commitWith(statement);
    else
        connection_.Execute(statement);
}

void OneStep::endWith(ado::Recordset &edited)
{
    if (own_)
        own_->commitWith(edited);
    else
        edited.Update();
}
