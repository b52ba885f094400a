#pragma once

#include "platform/ado/Connection.h"

#include <QString>
#include <QStringList>

#include <span>

/// The settings that the sale module and this program read, in the places where they read them.
namespace preferences {

struct Preference
{
    const char16_t *key;      ///< in its store
    const char16_t *also;     ///< another name of it, empty for none
    const char16_t *section;  ///< of this user's store on this machine; empty: a row of the clinic's t_HospSetup
    const char16_t *fallback; ///< what holds where nothing is stored
    const char16_t *what;     ///< for the technician, in Korean
    bool isNumber = false;
    bool isAddress = false; ///< may hold a password, which is not shown

    bool isOfClinic() const { return *section == u'\0'; }
};

std::span<const Preference> all();
/// By either name, case ignored; null for none.
const Preference *find(QStringView name);
extern const Preference &receiptPrinter;
extern const Preference &callSign;
extern const Preference &headOffice;

/// What holds now. `clinic` is asked for what is stored there. Raises RuntimeError.
QString value(const Preference &preference, const ado::ConnectionPtr &clinic);
/// Writes only what is another than before. Raises RuntimeError, also for a value that is none of the preference's.
void setValue(const Preference &preference, const QString &value, const ado::ConnectionPtr &clinic);

/// Forgets where windows stood, how they were divided, and the lists' columns. Raises RuntimeError.
void resetWindows();

/// `desk --set`: lists them where the assignment is empty, otherwise it is "KEY=VALUE", and "KEY=" brings the default back. The
/// clinic at the address is opened only where it is needed. The program's exit status. Raises RuntimeError.
int setOnTerminal(const QString &assignment, const QString &address);

} // namespace preferences
