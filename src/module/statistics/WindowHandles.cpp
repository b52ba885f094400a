#include "statistics/WindowHandles.h"

#include <QGuiApplication>
#include <QLibrary>

#include <cstdint>
#include <cstdlib>

#if QT_CONFIG(xcb)

namespace {

/// What a question to the X server gives; handed on by value.
struct Cookie
{
    unsigned int sequence;
};
using Ask = Cookie (*)(xcb_connection_t *, std::uint32_t window);
using Answer = void *(*)(xcb_connection_t *, Cookie, void **error);

/// The toolkit's connection to the X server, null on other desktops.
xcb_connection_t *xServer()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

/// Asks for the attributes, which only windows have. The library is there wherever the toolkit speaks to an X server, and
/// is not needed anywhere else: found at run time, linked to by nobody.
bool xServerKnows(xcb_connection_t *server, WId handle)
{
    static const auto ask = Ask(QLibrary::resolve(QStringLiteral("xcb"), 1, "xcb_get_window_attributes"));
    static const auto answer = Answer(QLibrary::resolve(QStringLiteral("xcb"), 1, "xcb_get_window_attributes_reply"));
    if (!ask || !answer)
        return true; // nobody can tell
    void *error = nullptr;
    void *attributes = answer(server, ask(server, std::uint32_t(handle)), &error);
    const bool known = attributes != nullptr;
    std::free(attributes);
    std::free(error);
    return known;
}

} // namespace

#endif

bool namesAWindow(WId handle)
{
    if (handle == 0)
        return false;
    if (QWidget::find(handle))
        return true;
#if QT_CONFIG(xcb)
    if (xcb_connection_t *server = xServer())
        return xServerKnows(server, handle);
#endif
    return true;
}
