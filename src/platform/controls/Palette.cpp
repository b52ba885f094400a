#include "platform/controls/Palette.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cmath>

namespace controls {

namespace {

constexpr double leastForLines = 3;

struct Both
{
    QRgb light;
    QRgb dark;
    QRgb of(Scheme scheme) const { return scheme == Scheme::Dark ? dark : light; }
};

struct GroundRow
{
    Ground ground;
    bool calm;
    Both back;
    Both text;
};

constexpr Both plainText{0x000000, 0xF0F0F0};
constexpr Both white{0xFFFFFF, 0xFFFFFF};
constexpr Both black{0x000000, 0x000000};

// clang-format off
constexpr std::array<GroundRow, std::size_t(Ground::Count)> grounds{{
    {Ground::Face,             true,  {0xEFEFEF, 0x2B2D30}, plainText},
    {Ground::Field,            true,  {0xFFFFFF, 0x1E1F22}, plainText},
    {Ground::Stripe,           true,  {0xF4F7FA, 0x26282B}, plainText},
    {Ground::Locked,           true,  {0xEFEFEF, 0x2B2D30}, plainText},
    {Ground::OutOfReach,       true,  {0xE4E7EB, 0x3A3D42}, plainText},
    {Ground::Needed,           true,  {0xFFFFE1, 0x3B3720}, plainText},
    {Ground::Reckoned,         true,  {0xFFF0D0, 0x453A22}, plainText},
    {Ground::RestingSelection, true,  {0xD3E2F1, 0x253C54}, plainText},
    {Ground::Hit,              true,  {0xFFE08A, 0x4D3C00}, plainText},
    {Ground::PaleAmber,        true,  {0xFFE7B3, 0x4A3800}, plainText},
    {Ground::PaleRed,          true,  {0xFFDAD6, 0x55211D}, plainText},
    {Ground::Tip,              false, {0xFFFFDC, 0x44474D}, plainText},
    {Ground::Accent,           false, {0x1F6FB2, 0x1F6FB2}, white},
    {Ground::Amber,            false, {0xFFB300, 0xFFB300}, black},
    {Ground::Red,              false, {0xB3261E, 0xB3261E}, white},
    {Ground::Paper,            false, white,                black},
}};

constexpr std::array<Both, std::size_t(Ink::Count)> inks{{
    plainText,            // Plain
    {0x606060, 0xB0B0B0}, // Faint
    {0xC80000, 0xFF8A80}, // Negative
    {0xB3261E, 0xFFB4AB}, // Owed
}};

constexpr std::array<Both, seriesCount> series{{
    {0x1F6FB2, 0x6FB1E8},
    {0xB35900, 0xF0A35E},
    {0x1B7F5C, 0x63C9A0},
    {0x9E3D64, 0xE58FB0},
    {0x5B5F97, 0xA7A9E6},
    {0x6B7280, 0xB8C0CC},
}};
// clang-format on

constexpr Both disabled{0x8C8C8C, 0x85888E};
constexpr Both scale{0xE4E7EB, 0x3A3D42};
constexpr Both group{0xD2D2D2, 0x45484D};
constexpr Both handle{0x868686, 0x7E8288};
constexpr Both focus{0x0B4F8A, 0x7CC0FF};
constexpr Both link{0x0B5CAD, 0x8AC4FF};

const GroundRow &rowOf(Ground ground)
{
    return grounds[std::size_t(ground)];
}

/// Relative luminance of one channel.
double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

Scheme scheme()
{
    const QPalette desk = QGuiApplication::palette();
    return luminance(desk.color(QPalette::Window)) < luminance(desk.color(QPalette::WindowText)) ? Scheme::Dark
                                                                                                 : Scheme::Light;
}

GroundColors colors(Ground ground, Scheme of)
{
    return {QColor(rowOf(ground).back.of(of)), QColor(rowOf(ground).text.of(of))};
}

bool isCalm(Ground ground)
{
    return rowOf(ground).calm;
}

QColor ink(Ink ink, Scheme of)
{
    return QColor(inks[std::size_t(ink)].of(of));
}

QColor disabledText(Scheme of)
{
    return QColor(disabled.of(of));
}

QColor focusFrame(const QColor &back)
{
    const QColor usual(focus.of(scheme()));
    if (contrast(usual, back) >= leastForLines)
        return usual;
    return QColor(luminance(back) < 0.18 ? white.light : black.light);
}

QColor groupLine(Scheme of)
{
    return QColor(group.of(of));
}

QColor scrollHandle(Scheme of)
{
    return QColor(handle.of(of));
}

QColor chartScale(Scheme of)
{
    return QColor(scale.of(of));
}

QColor seriesColor(std::size_t number, Scheme of)
{
    return QColor(series[number % seriesCount].of(of));
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QPalette deskPalette(Scheme of)
{
    const auto [face, text] = colors(Ground::Face, of);
    const struct
    {
        Ground ground;
        QPalette::ColorRole back, text;
    } pairs[] = {
        {Ground::Face, QPalette::Window, QPalette::WindowText},
        {Ground::Face, QPalette::Button, QPalette::ButtonText},
        {Ground::Field, QPalette::Base, QPalette::Text},
        {Ground::Stripe, QPalette::AlternateBase, QPalette::Text},
        {Ground::Tip, QPalette::ToolTipBase, QPalette::ToolTipText},
        {Ground::Accent, QPalette::Highlight, QPalette::HighlightedText},
    };
    QPalette palette(face, face);
    for (const auto &pair : pairs) {
        palette.setColor(pair.back, colors(pair.ground, of).back);
        palette.setColor(pair.text, colors(pair.ground, of).text);
    }
    const auto [resting, restingText] = colors(Ground::RestingSelection, of);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, resting);
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, restingText);
    palette.setColor(QPalette::PlaceholderText, ink(Ink::Faint, of));
    palette.setColor(QPalette::BrightText, ink(Ink::Negative, of));
    palette.setColor(QPalette::Link, QColor(link.of(of)));
    palette.setColor(QPalette::LinkVisited, QColor(link.of(of)));
    palette.setColor(QPalette::Light, face.lighter(150));
    palette.setColor(QPalette::Midlight, face.lighter(115));
    palette.setColor(QPalette::Mid, face.darker(130));
    palette.setColor(QPalette::Dark, face.darker(150));
    palette.setColor(QPalette::Shadow, face.darker(200));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, disabledText(of));
    palette.setColor(QPalette::Disabled, QPalette::Base, face);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, face.darker(130));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, text);
    return palette;
}

} // namespace controls
