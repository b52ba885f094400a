#pragma once

#include "products/RecordSave.h"
#include "session/Keys.h"
#include "session/SaleSession.h"

#include <QDate>
#include <QString>
#include <QVariant>

#include <map>

/// What the product panel holds when it is saved.
struct ProductEdit
{
    QString catagory;
    QString name;
    QString unitPrice; ///< money text
    QString memo;
    bool taxed = true;
    bool valid = true;
    QDate addedDate;
};

/// The flows that write to the product list, without a screen: on rsSaleProductListsManager, which is open, and on
/// gcnnMasterDB. They show nothing.
class ProductOperations
{
public:
    enum class Deletion {
        Deleted,
        Sold,
        Gone, ///< another desk was first; nothing was read anew
    };

    /// The session outlives the operations.
    explicit ProductOperations(SaleSession &session);

    /// Saves a new product. Refused without category or name, but only after transaction and new row were begun. Two
    /// products of one name are accepted.
    SaveOutcome add(const ProductEdit &edit);

    /// Remembers the current product, which must exist, for change(); returns its key.
    ProductKey beginChange();
    /// Saves the product that beginChange() saw, even if the list was loaded anew since and stands elsewhere. Refused
    /// without category or name. Fails when the product changed or went since.
    SaveOutcome change(const ProductEdit &edit);

    /// Deletes the product unless it was sold, and reads both product lists anew. Quirk (docs/architecture.md): a sold
    /// product that is no longer handled counts as unused and is deleted. Raises RuntimeError, after rolling back.
    Deletion remove(ProductKey product);

private:
    bool findSeen();
    void assign(const ProductEdit &edit, bool withPrice);

    SaleSession &session_;
    ProductKey edited_;
    std::map<QString, QVariant> seen_; ///< what a save assigns, as it was when the edit began, by column
};

/// Products of that name; the list itself does not ask.
qint16 countSameExistProductName(const ado::ConnectionPtr &connection, const QString &strPMName);
/// Order lines of the product, at most 32,767; 0 for one that is not handled.
qint16 CountNoOfProductUsed(const ado::ConnectionPtr &connection, qint32 lngPMPK);
