// SPDX-License-Identifier: MIT
// A bare program of the peer's: its application, and an event loop that ends at once.
#include <QCoreApplication>
#include <QTimer>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QTimer::singleShot(0, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
