#pragma once

#include "printing/clsVsPrint.h"

#include <map>

/// The template of a roll receipt: its text boxes with their places, fonts and fixed captions. It is a form only in name and
/// is never shown. `Narrow` has the same boxes in the same order for rolls on which the letters of the usual one would
/// become too small to be read.
class frmRollReceipt
{
public:
    enum Array { HD, Header, Cont, FT, FTTotAmount };
    enum Kind { Usual, Narrow };

    explicit frmRollReceipt(Kind kind = Usual);

    TemplateBox &txtHD(int index) { return box(HD, index); }
    TemplateBox &txtHeader(int index) { return box(Header, index); }
    TemplateBox &txtCont(int index) { return box(Cont, index); }
    TemplateBox &txtFT(int index) { return box(FT, index); }
    TemplateBox &txtFTTotAmount(int index) { return box(FTTotAmount, index); }
    TemplateBox &box(Array array, int index) { return boxes_.at({array, index}); }
    /// Printable width that the template was made for, mm.
    double designedWidth() const { return designedWidth_; }
    double reach() const { return reach_; } ///< of the print head, mm

private:
    double designedWidth_;
    double reach_;
    std::map<std::pair<Array, int>, TemplateBox> boxes_;
};
