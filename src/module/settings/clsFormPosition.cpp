#include "settings/clsFormPosition.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace {

QRect screenOf(const QWidget &form)
{
    const QScreen *screen = form.screen() ? form.screen() : QGuiApplication::primaryScreen();
    return screen->availableGeometry();
}

void centerOver(const QRect &area, QWidget &form, float rate)
{
    if (form.isMaximized())
        return; // it fills the screen, and to be moved would cost it its state
    if (rate != 0)
        form.resize((QSizeF(area.size()) * double(rate)).toSize());
    const QSize size = form.frameSize();
    form.move(area.left() + (area.width() - size.width()) / 2, area.top() + (area.height() - size.height()) / 2);
}

QPoint middleOf(const QWidget &container, const QSize &size)
{
    return {(container.width() - size.width()) / 2, (container.height() - size.height()) / 2};
}

int inCorner(int referenceLength, int length, int screenLength)
{
    const int place = referenceLength - length;
    return place < 0 || place + length > screenLength ? screenLength - length : place;
}

} // namespace

void clsFormPosition::CenterMain(const QWidget &mainForm, QWidget &form, float sngRate) const
{
    centerOver(mainForm.frameGeometry(), form, sngRate);
}

void clsFormPosition::CenterScreen(QWidget &form, float sngRate) const
{
    centerOver(screenOf(form), form, sngRate);
}

void clsFormPosition::CenterForm(const QWidget &form, QWidget &control) const
{
    control.move(middleOf(form, control.size()));
}

void clsFormPosition::CenterControl(const QWidget &container, QWidget &control) const
{
    const QPoint place = middleOf(container, control.size());
    control.move(std::max(place.x(), 0), std::max(place.y(), 0));
}

void clsFormPosition::CenterTwoControl(const QWidget &container, QWidget &first, QWidget &second) const
{
    const int height = first.height() + second.height();
    const int top = std::max(middleOf(container, {0, height}).y(), 0);
    first.move(std::max(middleOf(container, first.size()).x(), 0), top);
    second.move(std::max(middleOf(container, second.size()).x(), 0), top + first.height());
}

void clsFormPosition::LocateFormBottomRight(const QWidget &referenceForm, QWidget &form) const
{
    const QRect screen = screenOf(form);
    const QSize reference = referenceForm.frameSize();
    const QSize size = form.frameSize();
    form.move(inCorner(reference.width(), size.width(), screen.width()),
              inCorner(reference.height(), size.height(), screen.height()));
}
