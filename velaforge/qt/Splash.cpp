// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/Splash.h>

#include <velaforge/application/Application.h>
#include <velaforge/qt/internal/Icons.h>
#include <velaforge/qt/internal/Text.h>

#include <QPixmap>
#include <QSplashScreen>

namespace vfApplication {

Splash::Splash() = default;

Splash::~Splash() = default;

int Splash::alignment()
{
    const Application& application = *Application::instance(false);
    const QString horizontal = QString::fromUtf8(application.getSplashHorizontalAlignmet()).toUpper();
    const QString vertical = QString::fromUtf8(application.getSplashVerticalAlignmet()).toUpper();
    int flags = Qt::AlignLeft;
    if (horizontal == QLatin1String("CENTER"))
        flags = Qt::AlignHCenter;
    else if (horizontal == QLatin1String("RIGHT"))
        flags = Qt::AlignRight;
    if (vertical == QLatin1String("TOP"))
        flags |= Qt::AlignTop;
    else if (vertical == QLatin1String("CENTER"))
        flags |= Qt::AlignVCenter;
    else
        flags |= Qt::AlignBottom;
    return flags;
}

void Splash::show()
{
    const Application& application = *Application::instance(false);
    const QString name = toQt(vfBase::VfString(application.getSplashImageName()));
    if (name.isEmpty())
        return;
    QPixmap picture(name);
    if (picture.isNull())
        picture = findPicture(name).pixmap(480, 300);
    if (picture.isNull())
        return;
    m_screen = std::make_unique<QSplashScreen>(picture);
    m_screen->setObjectName(QStringLiteral("splash"));
    m_screen->show();
    showText(toQt(vfBase::VfString(application.getApplicationVersion())));
}

bool Splash::showText(const QString& text)
{
    if (!m_screen)
        return false;
    float red = 1;
    float green = 1;
    float blue = 1;
    Application::instance(false)->getSplashTextColor(red, green, blue);
    const QColor color =
        QColor::fromRgbF(qBound(0.f, red, 1.f), qBound(0.f, green, 1.f), qBound(0.f, blue, 1.f));
    m_screen->showMessage(text, alignment(), color);
    return true;
}

void Splash::finish(QWidget& window)
{
    if (!m_screen)
        return;
    m_screen->finish(&window);
    m_screen.reset();
}

} // namespace vfApplication
