#include "printing/RollComposer.h"

#include "data/clsSQL.h"
#include "platform/print/Lengths.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"
#include "printing/ReceiptLines.h"
#include "printing/frmRollReceipt.h"
#include "settings/LogoFile.h"
#include "settings/clsProperties.h"

#include <QDateTime>
#include <QFile>
#include <QImage>

#include <algorithm>

namespace {

/// Dots of a picture to an inch: its natural size.
constexpr double pictureDotsPerInch = 96;
/// Size of most letters of the usual template.
constexpr double usualPoints = 9;

using Row = std::vector<std::pair<frmRollReceipt::Array, int>>;
constexpr auto HD = frmRollReceipt::HD;
constexpr auto Header = frmRollReceipt::Header;
constexpr auto Cont = frmRollReceipt::Cont;
constexpr auto FT = frmRollReceipt::FT;
constexpr auto Amount = frmRollReceipt::FTTotAmount;

// The boxes between the logo and the lines, from the top to the bottom.

std::vector<Row> usualHeader()
{
    return {{{Header, 1}, {Header, 2}},
            {{Header, 3}},
            {{Header, 4}},
            {{Header, 5}, {Header, 6}},
            {{Header, 8}},
            {{Header, 9}},
            {{Header, 7}},
            {{HD, 1}},
            {{HD, 3}, {HD, 4}, {HD, 5}, {HD, 6}, {HD, 7}},
            {{HD, 2}}};
}

std::vector<Row> narrowHeader()
{
    return {{{Header, 1}}, {{Header, 2}}, {{Header, 3}}, {{Header, 4}},
            {{Header, 5}}, {{Header, 6}}, {{Header, 8}}, {{Header, 9}},
            {{Header, 7}}, {{HD, 1}},     {{HD, 3}},     {{HD, 4}, {HD, 5}, {HD, 6}, {HD, 7}},
            {{HD, 2}}};
}

/// Composes one receipt from one template.
class RollComposer
{
public:
    RollComposer(const RollReceiptOrder &order, frmRollReceipt::Kind kind, double width)
        : order_(order)
        , kind_(kind)
        , form_(kind)
        , sngRate_(float(std::min(1.0, width / form_.designedWidth())))
        , reach_(std::min(form_.reach(), width / double(sngRate_)))
        , rows_(reach_, sngRate_)
        , lngRowHeight_(qRound(form_.txtCont(0).place.height()))
    {
    }

    RollRows compose()
    {
        fillHeader();
        printLogoOrName();
        printHeader();
        printLines();
        printFooter();
        return std::move(rows_);
    }

private:
    void fillHeader();
    void printLogoOrName();
    void printHeader();
    void printLines();
    void printFooter();
    void addRow(const Row &row, float sngTop, bool withRowBefore = false)
    {
        std::vector<RollBox> boxes;
        for (const auto &[array, index] : row)
            boxes.push_back({form_.box(array, index), array * 100 + index});
        rows_.add(boxes, sngTop, withRowBefore);
    }

    const RollReceiptOrder &order_;
    frmRollReceipt::Kind kind_;
    frmRollReceipt form_;
    float sngRate_;
    double reach_; ///< mm of the template
    RollRows rows_;
    receipt::Sums sums_;
    int lngRowHeight_; ///< mm
    float sngY_ = 0;   ///< mm
};

void RollComposer::fillHeader()
{
    const clsProperties properties;
    const auto shop = [&](const char16_t *key) { return properties.PropValue(QString::fromUtf16(key)); };
    form_.txtHeader(1).text = shop(u"지점명");
    form_.txtHeader(2).text = shop(u"지점사업자번호");
    form_.txtHeader(3).text = QStringLiteral("대표:") + shop(u"지점대표자");
    form_.txtHeader(4).text = shop(u"지점주소");
    form_.txtHeader(5).text = shop(u"지점전화번호");
    form_.txtHeader(6).text = shop(u"홈페이지주소");
    form_.txtHeader(7).text = QStringLiteral("[발행일]") + runtime::dateTimeText(QDateTime::currentDateTime());
    form_.txtHeader(8).text = runtime::Trim(order_.customerName) + QStringLiteral("님 (구매날짜:")
                              + runtime::text(order_.orderDate) + QLatin1Char(')');
    form_.txtHeader(9).text = shop(u"영수증고객안내문");
}

void RollComposer::printLogoOrName()
{
    const QString file = logoFile();
    if (!QFile::exists(file)) {
        // Twice, beside each other and once more in the line below: that is the receipt's face without a logo.
        form_.txtHD(0).text = form_.txtHeader(0).text = form_.txtHeader(1).text;
        addRow({{HD, 0}, {Header, 0}}, 0);
        rows_.endPart();
        return;
    }
    const QImage logo = readLogo(file);
    if (logo.isNull())
        throw runtime::RuntimeError(
            runtime::ErrorNumber::InvalidCall,
            QStringLiteral("로고 그림파일을 가져올 수 없습니다. 환경설정에서 로고를 다시 선택하십시오: ") + file);
    QSizeF size = QSizeF(logo.size()) * (print::mmPerInch / pictureDotsPerInch);
    // A picture larger than the room above the shop's data would cover it.
    const QSizeF room(reach_, form_.txtHeader(1).place.top());
    if (size.width() > room.width() || size.height() > room.height())
        size.scale(room, Qt::KeepAspectRatio);
    rows_.addPicture(logo, size * double(sngRate_));
}

void RollComposer::printHeader()
{
    for (const Row &row : kind_ == frmRollReceipt::Usual ? usualHeader() : narrowHeader())
        addRow(row, 0);
    rows_.endPart();
}

void RollComposer::printLines()
{
    const bool usual = kind_ == frmRollReceipt::Usual;
    const Row first = usual ? Row{{Cont, 0}} : Row{{Cont, 0}, {Cont, 1}};
    Row second{{Cont, 2}, {Cont, 3}, {Cont, 4}, {Cont, 5}};
    if (usual)
        second.emplace(second.begin(), Cont, 1);
    qint16 intItem = 1;
    receipt::readLines(order_.connection, order_.lngOrdMPK, receipt::Numbers::LeadingZero, intItem,
                       [&](const receipt::Line &line) {
                           sums_.add(line);
                           const QString texts[] = {line.number() + line.name,      line.category,
                                                    receipt::money(line.curUnit),   receipt::money(line.curDisc),
                                                    QString::number(line.intCount), receipt::money(line.amount())};
                           for (int index = 0; index < int(std::size(texts)); ++index)
                               form_.txtCont(index).text = texts[index];
                           addRow(first, sngY_);
                           addRow(second, sngY_, true);
                           rows_.endPart();
                           sngY_ += float(2 * lngRowHeight_);
                       });
}

void RollComposer::printFooter()
{
    const runtime::Currency amounts[] = {sums_.curTaxed, sums_.curFree, sums_.curTaxed + sums_.curFree,
                                         receipt::readReceived(order_.connection, order_.lngOrdMPK)};
    for (int index = 0; index < int(std::size(amounts)); ++index)
        form_.txtFTTotAmount(index).text = receipt::money(amounts[index]);
    // The template's footer stands behind one item already.
    sngY_ -= float(2 * lngRowHeight_);
    for (const Row &row : {Row{{FT, 0}, {Amount, 0}}, Row{{FT, 1}, {Amount, 1}}, Row{{FT, 2}, {Amount, 2}},
                           Row{{FT, 5}, {Amount, 3}}, Row{{FT, 3}}, Row{{FT, 4}}})
        addRow(row, sngY_);
    rows_.endPart();
}

} // namespace

RollRows composeRoll(const RollReceiptOrder &order, double width)
{
    const double usual = frmRollReceipt(frmRollReceipt::Usual).designedWidth();
    if (usualPoints * double(float(width / usual)) >= leastRollPoints) {
        RollRows rows = RollComposer(order, frmRollReceipt::Usual, width).compose();
        if (width >= usual || !rows.crowded())
            return rows;
    }
    return RollComposer(order, frmRollReceipt::Narrow, width).compose();
}
