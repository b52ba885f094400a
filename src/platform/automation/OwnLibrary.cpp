#include "platform/automation/OwnLibrary.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <qt_windows.h>

#include <iterator>
#else
#include <dlfcn.h>
#endif

namespace automation {

#ifdef Q_OS_WIN

const void *libraryHolding(const void *address)
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(address), &module);
    return module;
}

QString libraryFileHolding(const void *address)
{
    wchar_t path[32'768];
    const auto module = static_cast<HMODULE>(const_cast<void *>(libraryHolding(address)));
    const DWORD length = module ? GetModuleFileNameW(module, path, DWORD(std::size(path))) : 0;
    return QDir::fromNativeSeparators(QString::fromWCharArray(path, int(length)));
}

#else

const void *libraryHolding(const void *address)
{
    Dl_info found{};
    return dladdr(address, &found) ? found.dli_fbase : nullptr;
}

QString libraryFileHolding(const void *address)
{
    Dl_info found{};
    if (!dladdr(address, &found) || !found.dli_fname)
        return {};
    return QFileInfo(QFile::decodeName(found.dli_fname)).absoluteFilePath();
}

#endif

} // namespace automation
