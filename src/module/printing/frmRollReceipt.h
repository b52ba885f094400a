#pragma once

#include "printing/clsVsPrint.h"

#include <map>

/// The template of a roll receipt: its text boxes with their places, fonts and fixed captions. It is a form only in name and
/// is never shown.
class frmRollReceipt
{
public:
    enum Array { HD, Header, Cont, FT, FTTotAmount };

    frmRollReceipt();

    TemplateBox &txtHD(int index) { return box(HD, index); }
    TemplateBox &txtHeader(int index) { return box(Header, index); }
    TemplateBox &txtCont(int index) { return box(Cont, index); }
    TemplateBox &txtFT(int index) { return box(FT, index); }
    TemplateBox &txtFTTotAmount(int index) { return box(FTTotAmount, index); }
    TemplateBox &box(Array array, int index) { return boxes_.at({array, index}); }

private:
    std::map<std::pair<Array, int>, TemplateBox> boxes_;
};
