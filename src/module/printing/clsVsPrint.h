#pragma once

#include "platform/print/Document.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QRectF>
#include <QString>

/// A text box of a template that is never shown; place and size in millimetres.
struct TemplateBox
{
    QString text;
    QRectF place;
    print::TextFont font;
    print::Align align = print::Align::Left;
    double room = 0; ///< mm that the text may take to the right where nothing stands beside it; 0: the box's width
};

/// Copies a control onto a print page: its place moved by `sngLeft` and `sngTop` (mm), place and font scaled by `sngRate`.
/// All return true. The two that copy a control of the screen take its place in its parent, in millimetres of the screen.
class clsVsPrint
{
public:
    bool PrintTextBox2VsPrint(float sngLeft, float sngTop, float sngRate, const TemplateBox &box,
                              print::Document &vsPrint) const;
    /// Puts the text into the control first; it is never bold.
    bool PrintMultiLineTextBox2VsPrint(float sngLeft, float sngTop, float sngRate, QPlainTextEdit &box,
                                       print::Document &vsPrint, const QString &text) const;
    /// Always centred.
    bool PrintComboBox2VsPrint(float sngLeft, float sngTop, float sngRate, const QComboBox &box,
                               print::Document &vsPrint) const;
};
