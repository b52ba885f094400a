#pragma once

#include <QProxyStyle>

namespace controls {

/// The style of a whole program: Fusion, what has the focus in a frame of two pixels, no shading under texts, and flat
/// scroll bars.
class DeskStyle : public QProxyStyle
{
    Q_OBJECT
public:
    DeskStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
};

} // namespace controls
