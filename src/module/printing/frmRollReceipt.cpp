#include "printing/frmRollReceipt.h"

#include "platform/print/Lengths.h"

using print::Align;
using print::fromTwips;

namespace {

/// A box as it was designed: place and size in twips.
struct Design
{
    frmRollReceipt::Array array;
    int index;
    int left;
    int top;
    int width;
    int height;
    double points;
    Align align;
    const char16_t *caption;
};

constexpr auto HD = frmRollReceipt::HD;
constexpr auto Header = frmRollReceipt::Header;
constexpr auto Cont = frmRollReceipt::Cont;
constexpr auto FT = frmRollReceipt::FT;
constexpr auto Amount = frmRollReceipt::FTTotAmount;
constexpr const char16_t *rollDashes = u"---------------------------------------------";
/// The print head's reach.
constexpr int printedWidth = 4185;
constexpr double usualWidth = 72;
constexpr double narrowWidth = 48;

constexpr Design usualDesigns[] = {
    {HD, 0, 60, 390, 1485, 360, 12, Align::Left, u""},
    {Header, 0, 2850, 420, 1215, 270, 9, Align::Left, u""},
    {Header, 1, 30, 750, 2205, 330, 11.25, Align::Left, u""},
    {Header, 2, 2250, 750, 1815, 330, 11.25, Align::Left, u""},
    {Header, 3, 30, 1050, 2205, 330, 11.25, Align::Left, u""},
    {Header, 4, 30, 1380, 4125, 270, 9, Align::Left, u""},
    {Header, 5, 30, 1650, 1335, 270, 9, Align::Left, u""},
    {Header, 6, 1620, 1620, 2535, 270, 9, Align::Left, u""},
    {Header, 8, 30, 1950, 4125, 285, 9.75, Align::Left, u""},
    {Header, 9, 30, 2280, 4125, 270, 9, Align::Left, u""},
    {Header, 7, 30, 2520, 3255, 270, 9, Align::Left, u""},
    {HD, 1, 30, 2760, 4185, 270, 9, Align::Left, rollDashes},
    {HD, 3, 30, 2970, 855, 285, 9.75, Align::Left, u"상품명"},
    {HD, 4, 1440, 2970, 525, 285, 9.75, Align::Left, u"단가"},
    {HD, 5, 2220, 2970, 495, 285, 9.75, Align::Left, u"할인"},
    {HD, 6, 2760, 2970, 525, 285, 9.75, Align::Left, u"수량"},
    {HD, 7, 3690, 2970, 495, 285, 9.75, Align::Left, u"금액"},
    {HD, 2, 30, 3210, 4185, 270, 9, Align::Left, rollDashes},
    {Cont, 0, 0, 3510, 3015, 270, 9, Align::Left, u""},
    {Cont, 1, 0, 3780, 1215, 270, 9, Align::Left, u""},
    {Cont, 2, 1080, 3780, 825, 270, 9, Align::Right, u""},
    {Cont, 3, 1890, 3780, 765, 270, 9, Align::Right, u""},
    {Cont, 4, 2760, 3780, 375, 270, 9, Align::Right, u""},
    {Cont, 5, 3120, 3780, 945, 270, 9, Align::Right, u""},
    {FT, 0, 0, 4290, 2115, 330, 9.75, Align::Right, u"부가세 과세 물품가액"},
    {Amount, 0, 2850, 4290, 1215, 285, 9.75, Align::Right, u""},
    {FT, 1, 0, 4620, 2115, 330, 9.75, Align::Right, u"부가세 면세 물품가액"},
    {Amount, 1, 2850, 4620, 1215, 285, 9.75, Align::Right, u""},
    {FT, 2, 570, 4980, 1545, 405, 14.25, Align::Right, u"합      계"},
    {Amount, 2, 2250, 4980, 1815, 405, 14.25, Align::Right, u""},
    {FT, 5, 570, 5430, 1545, 360, 14.25, Align::Right, u"수납금액"},
    {Amount, 3, 2250, 5400, 1815, 360, 14.25, Align::Right, u""},
    {FT, 3, 0, 5970, 4335, 300, 9, Align::Left, u"상품명 앞 * 표시가 되어 있는 품목은 "},
    {FT, 4, 0, 6240, 4335, 285, 9, Align::Left, u"부가세 과세 품목입니다."},
};

// 48 mm are 2721 twips.
constexpr Design narrowDesigns[] = {
    {HD, 0, 0, 390, 1500, 300, 10, Align::Left, u""},
    {Header, 0, 1560, 420, 1161, 240, 8, Align::Left, u""},
    {Header, 1, 0, 700, 2721, 300, 10, Align::Left, u""},
    {Header, 2, 0, 970, 2721, 240, 9, Align::Left, u""},
    {Header, 3, 0, 1210, 2721, 240, 9, Align::Left, u""},
    {Header, 4, 0, 1450, 2721, 220, 8, Align::Left, u""},
    {Header, 5, 0, 1670, 2721, 220, 8, Align::Left, u""},
    {Header, 6, 0, 1890, 2721, 220, 8, Align::Left, u""},
    {Header, 8, 0, 2130, 2721, 220, 8, Align::Left, u""},
    {Header, 9, 0, 2350, 2721, 220, 8, Align::Left, u""},
    {Header, 7, 0, 2570, 2721, 220, 8, Align::Left, u""},
    {HD, 1, 0, 2780, 2721, 200, 7, Align::Left, rollDashes},
    {HD, 3, 0, 2960, 855, 220, 8, Align::Left, u"상품명"},
    {HD, 4, 0, 3180, 850, 220, 8, Align::Right, u"단가"},
    {HD, 5, 860, 3180, 640, 220, 8, Align::Right, u"할인"},
    {HD, 6, 1510, 3180, 350, 220, 8, Align::Right, u"수량"},
    {HD, 7, 1870, 3180, 851, 220, 8, Align::Right, u"금액"},
    {HD, 2, 0, 3390, 2721, 200, 7, Align::Left, rollDashes},
    {Cont, 0, 0, 3590, 2000, 227, 8, Align::Left, u""},
    {Cont, 1, 2010, 3590, 711, 227, 8, Align::Right, u""},
    {Cont, 2, 0, 3810, 850, 227, 8, Align::Right, u""},
    {Cont, 3, 860, 3810, 640, 227, 8, Align::Right, u""},
    {Cont, 4, 1510, 3810, 350, 227, 8, Align::Right, u""},
    {Cont, 5, 1870, 3810, 851, 227, 8, Align::Right, u""},
    {FT, 0, 0, 4120, 1650, 240, 8, Align::Right, u"부가세 과세 물품가액"},
    {Amount, 0, 1660, 4120, 1061, 240, 8, Align::Right, u""},
    {FT, 1, 0, 4350, 1650, 240, 8, Align::Right, u"부가세 면세 물품가액"},
    {Amount, 1, 1660, 4350, 1061, 240, 8, Align::Right, u""},
    {FT, 2, 0, 4600, 1250, 330, 11, Align::Right, u"합      계"},
    {Amount, 2, 1260, 4600, 1461, 330, 11, Align::Right, u""},
    {FT, 5, 0, 4920, 1250, 330, 11, Align::Right, u"수납금액"},
    {Amount, 3, 1260, 4920, 1461, 330, 11, Align::Right, u""},
    {FT, 3, 0, 5270, 2721, 220, 8, Align::Left, u"상품명 앞 * 표시가 되어 있는 품목은 "},
    {FT, 4, 0, 5490, 2721, 220, 8, Align::Left, u"부가세 과세 품목입니다."},
};

TemplateBox made(const Design &design)
{
    return {.text = QString::fromUtf16(design.caption),
            .place = {fromTwips(design.left), fromTwips(design.top), fromTwips(design.width), fromTwips(design.height)},
            .font = {QStringLiteral("굴림"), design.points, true},
            .align = design.align};
}

} // namespace

frmRollReceipt::frmRollReceipt(Kind kind)
    : designedWidth_(kind == Usual ? usualWidth : narrowWidth)
    , reach_(kind == Usual ? fromTwips(printedWidth) : narrowWidth)
{
    const auto take = [this](const auto &designs) {
        for (const Design &design : designs)
            boxes_[{design.array, design.index}] = made(design);
    };
    if (kind == Narrow) {
        take(narrowDesigns);
        return;
    }
    take(usualDesigns);
    // A name stands alone on its line; a category must end where the unit price's box begins, which reaches into its own;
    // a telephone number may go on up to the home page.
    txtCont(0).room = fromTwips(printedWidth);
    txtCont(1).room = txtCont(2).place.left();
    txtHeader(5).room = txtHeader(6).place.left() - txtHeader(5).place.left();
}
