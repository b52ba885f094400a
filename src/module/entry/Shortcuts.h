#pragma once

#include <QString>
#include <QWidget>

#include <vector>

/// The window's keys, in one table: what installs them, the tooltips and the sheet of all keys are made from it.
struct Shortcut
{
    enum class Does {
        Presses,   ///< the button
        EntersBox, ///< the text box, with its whole text selected
        TurnsTo,   ///< the tab; `tab` tells which
        ShowsKeys, ///< the sheet
        IsTold,    ///< whoever owns the control acts on the key, here it is only told
    };

    const char16_t *where; ///< group of the sheet
    const char *keys;      ///< as a QKeySequence reads and users know them
    const char16_t *what;
    Does does = Does::IsTold;
    const char *control = ""; ///< none: a key of dialogs and boxes
    int tab = -1;
};

const std::vector<Shortcut> &shortcuts();

/// Makes them work in the window. A key acts where its control is enabled and visible, neither under a modal dialog nor
/// while a flow of the window is under way, and once however long it is held.
void installShortcuts(QWidget &window);
