// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/Display.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>

#include <cstring>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace vfApplication {

namespace {

/// Groups the texts for those who translate them.
struct Display
{
    Q_DECLARE_TR_FUNCTIONS(Display)
};

/// @return the platform that the command line or the environment asks for; empty when neither does
QByteArray askedPlatform(int argc, char** argv)
{
    for (int i = 1; i + 1 < argc; ++i) {
        if (!std::strcmp(argv[i], "-platform") || !std::strcmp(argv[i], "--platform"))
            return argv[i + 1];
    }
    return qgetenv("QT_QPA_PLATFORM");
}

/// Kept until Qt has a connection of its own: a server that loses its only client begins anew, and that takes longer than
/// all the rest.
xcb_connection_t*& keptConnection()
{
    static xcb_connection_t* kept = nullptr;
    return kept;
}

bool isXThere()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    letGoOfDisplay();
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) == 0) {
        keptConnection() = connection;
        return true;
    }
    xcb_disconnect(connection);
    return false;
}

bool isWaylandThere()
{
    const QString display = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (display.isEmpty())
        return false;
    // Qt's part for Wayland is a package of its own.
    const QDir platforms(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QLatin1String("/platforms"));
    if (platforms.entryList({QStringLiteral("libqwayland*.so")}, QDir::Files).isEmpty())
        return false;
    const QByteArray path = QDir(qEnvironmentVariable("XDG_RUNTIME_DIR")).filePath(display).toLocal8Bit();
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (std::size_t(path.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.constData(), std::size_t(path.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isThere =
        socket >= 0 && ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    if (socket >= 0)
        ::close(socket);
    return isThere;
}

} // namespace

void letGoOfDisplay()
{
    if (keptConnection())
        xcb_disconnect(std::exchange(keptConnection(), nullptr));
}

QString displayError(int argc, char** argv, QByteArray& platform)
{
    const QByteArray asked = askedPlatform(argc, argv);
    const bool wantsX = asked.isEmpty() || asked.startsWith("xcb");
    const bool wantsWayland = asked.isEmpty() || asked.startsWith("wayland");
    if (!wantsX && !wantsWayland)
        return {};
    if (wantsX && isXThere())
        return {};
    if (wantsWayland && isWaylandThere()) {
        if (asked.isEmpty())
            platform = "wayland"; // Qt looks for an X display first, also where there is none
        return {};
    }
    const QString x = qEnvironmentVariable("DISPLAY");
    const QString wayland = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (x.isEmpty() && wayland.isEmpty())
        return Display::tr("there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
    return Display::tr("the display %1 does not answer").arg(x.isEmpty() ? wayland : x);
}

} // namespace vfApplication
