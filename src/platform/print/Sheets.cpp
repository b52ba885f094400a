#include "platform/print/Sheets.h"

#include "platform/runtime/RuntimeError.h"

#include <algorithm>

namespace print {

namespace {

constexpr double tolerance = 1e-6;

double bottomOf(const TextItem &text)
{
    return text.text.isEmpty() ? 0 : text.box.top() + lineHeight(text.font);
}

double bottomOf(const PictureItem &picture)
{
    return picture.box.bottom();
}

/// What lies between two breaks.
struct Piece
{
    double top = 0;
    double bottom = 0;
    Page page;
};

std::vector<Piece> piecesOf(const Page &page, const std::vector<double> &breaks)
{
    std::vector<Piece> pieces;
    for (const double top : breaks)
        pieces.push_back({top, top, {}});
    const auto pieceOf = [&](const QRectF &box) -> Piece & {
        const auto below = std::upper_bound(breaks.begin(), breaks.end(), box.top() + tolerance);
        return pieces[std::size_t(std::max<std::ptrdiff_t>(below - breaks.begin() - 1, 0))];
    };
    const auto take = [&](const auto &item, auto list) {
        Piece &piece = pieceOf(item.box);
        piece.bottom = std::max(piece.bottom, bottomOf(item));
        (piece.page.*list).push_back(item);
    };
    for (const PictureItem &picture : page.pictures)
        take(picture, &Page::pictures);
    for (const TextItem &text : page.texts)
        take(text, &Page::texts);
    return pieces;
}

void put(Document &document, const Piece &piece, const QPointF &by)
{
    for (const PictureItem &picture : piece.page.pictures)
        document.addPicture(picture.image, picture.box.translated(by));
    for (TextItem text : piece.page.texts) {
        text.box.translate(by);
        document.addText(text);
    }
}

} // namespace

Document onSheets(const Document &strip, const std::vector<double> &breaks, const RollPaper &paper, double feed)
{
    const std::vector<Piece> pieces = piecesOf(strip.pages().front(), breaks);
    double height = 0;
    for (const Piece &piece : pieces)
        height = std::max(height, piece.bottom);
    const QSizeF sheet(paper.width, paper.lengthFor(height, feed));
    const double room = sheet.height() - paper.edges.top() - paper.edges.bottom();

    Document document(sheet);
    double start = pieces.front().top; // of the present sheet, on the strip
    for (const Piece &piece : pieces) {
        if (piece.bottom - start > room + tolerance && piece.top > start) {
            document.addPage();
            start = piece.top;
        }
        if (piece.bottom - start > room + tolerance)
            throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                        QStringLiteral("영수증을 출력하기에는 프린터의 용지가 너무 짧습니다."));
        put(document, piece, {paper.edges.left(), paper.edges.top() - start});
    }
    return document;
}

} // namespace print
