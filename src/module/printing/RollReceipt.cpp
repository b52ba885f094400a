#include "printing/RollReceipt.h"

#include "data/clsSQL.h"
#include "platform/controls/MessageBox.h"
#include "platform/print/Lengths.h"
#include "platform/print/Printers.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"
#include "printing/ReceiptLines.h"
#include "printing/clsReceiptPrinter.h"
#include "printing/frmRollReceipt.h"
#include "session/modGlobalVars.h"
#include "settings/LogoFile.h"
#include "settings/clsProperties.h"

#include <QDateTime>
#include <QFile>
#include <QImage>

namespace {

/// Paper of the usual receipt printers, where a printer does not tell its own.
constexpr double usualRollWidth = 80;
/// Empty paper below the last line, mm.
constexpr double feed = 5;
/// Dots of a picture to an inch: its natural size.
constexpr double pictureDotsPerInch = 96;

/// Composes one receipt from the template.
class RollComposer
{
public:
    RollComposer(const RollReceiptOrder &order, double paperWidth)
        : order_(order)
        , paper_({paperWidth, print::A4.height()})
        , lngRowHeight_(qRound(form_.txtCont(0).place.height()))
    {
    }

    print::Document compose()
    {
        fillHeader();
        printLogoOrName();
        printBoxes(frmRollReceipt::HD, 1, 7, 0);
        printBoxes(frmRollReceipt::Header, 1, 9, 0);
        printLines();
        printFooter();
        paper_.cutBelowContents(feed);
        return std::move(paper_);
    }

private:
    void fillHeader();
    void printLogoOrName();
    void printLines();
    void printFooter();
    void printBoxes(frmRollReceipt::Array array, int first, int last, float sngTop)
    {
        for (int index = first; index <= last; ++index)
            clsVsPrint().PrintTextBox2VsPrint(0, sngTop, 1, form_.box(array, index), paper_);
    }

    const RollReceiptOrder &order_;
    frmRollReceipt form_;
    print::Document paper_;
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
        printBoxes(frmRollReceipt::HD, 0, 0, 0);
        printBoxes(frmRollReceipt::Header, 0, 0, 0);
        return;
    }
    const QImage logo = readLogo(file);
    if (logo.isNull())
        throw runtime::RuntimeError(
            runtime::ErrorNumber::InvalidCall,
            QStringLiteral("로고 그림파일을 가져올 수 없습니다. 환경설정에서 로고를 다시 선택하십시오: ") + file);
    QSizeF size = QSizeF(logo.size()) * (print::mmPerInch / pictureDotsPerInch);
    // A picture larger than the room above the shop's data would cover it.
    const QSizeF room(paper_.paper().width(), form_.txtHeader(1).place.top());
    if (size.width() > room.width() || size.height() > room.height())
        size.scale(room, Qt::KeepAspectRatio);
    paper_.addPicture(logo, {QPointF(), size});
}

void RollComposer::printLines()
{
    qint16 intItem = 1;
    receipt::readLines(order_.connection, order_.lngOrdMPK, receipt::Numbers::LeadingZero, intItem,
                       [this](const receipt::Line &line) {
                           sums_.add(line);
                           const QString texts[] = {line.number() + line.name,      line.category,
                                                    receipt::money(line.curUnit),   receipt::money(line.curDisc),
                                                    QString::number(line.intCount), receipt::money(line.amount())};
                           for (int index = 0; index < int(std::size(texts)); ++index)
                               form_.txtCont(index).text = texts[index];
                           printBoxes(frmRollReceipt::Cont, 0, 5, sngY_);
                           sngY_ += float(2 * lngRowHeight_);
                       });
}

void RollComposer::printFooter()
{
    const receipt::LedgerTotals totals =
        receipt::readTotals(order_.connection, clsSQL().getTranAllEachTotalByOrdMPKSQL(order_.lngOrdMPK));
    const runtime::Currency amounts[] = {sums_.curTaxed, sums_.curFree, sums_.curTaxed + sums_.curFree,
                                         totals.curSunap};
    for (int index = 0; index < int(std::size(amounts)); ++index)
        form_.txtFTTotAmount(index).text = receipt::money(amounts[index]);
    // The template's footer stands behind one item already.
    sngY_ -= float(2 * lngRowHeight_);
    printBoxes(frmRollReceipt::FT, 0, 5, sngY_);
    printBoxes(frmRollReceipt::FTTotAmount, 0, 3, sngY_);
}

double paperWidthOf(const QString &printer)
{
    return print::isPrinter(printer) ? print::pageSize(printer).width() : usualRollWidth;
}

} // namespace

print::Document rollReceipt(const RollReceiptOrder &order, double paperWidth)
{
    return RollComposer(order, paperWidth).compose();
}

void Print2EpsonTMPartialCut(const QString &printer, const RollReceiptOrder &order)
{
    print::send(rollReceipt(order, paperWidthOf(printer)), printer, QStringLiteral("영수증"));
}

void PrintRollPrintReceipt(QWidget *owner, const RollReceiptOrder &order)
{
    const QString printer = clsReceiptPrinter().GetReceiptPrinter();
    if (printer.isEmpty()) {
        controls::MsgBox(QStringLiteral("롤 프린터를 찾을 수 없습니다. 롤 프린터로 출력하기 위해서는")
                             + QLatin1Char('\r')
                             + QStringLiteral("[EPSON TM-T88II Partial cut]으로 등록된 프린터가 필요합니다."),
                         controls::InformationIcon, QStringLiteral("프린터를 찾지 못했습니다."), owner);
    } else if (printer.toUpper() == QLatin1String("CBM RECEIPT PRINTER (TEXT ONLY)")) {
        controls::MsgBox(QStringLiteral("그래픽 출력이 가능한 프린터를 사용하십시오."), controls::InformationIcon,
                         QStringLiteral("지원되지 않는 프린터"), owner);
    } else {
        Print2EpsonTMPartialCut(printer, order);
    }
}
