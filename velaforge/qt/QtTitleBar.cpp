// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtTitleBar.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/documents/Document.h>
#include <velaforge/qt/internal/Icons.h>
#include <velaforge/qt/internal/Text.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>

namespace vfApplication {

struct QtTitleBarPrivate
{
    QMainWindow& window;
    QWidget* bar = nullptr; ///< null without a logo
    QLabel* logo = nullptr;
    QLabel* banner = nullptr;
};

QtTitleBar::QtTitleBar(QMainWindow& window, bool hasLogo)
    : d(std::make_unique<QtTitleBarPrivate>(QtTitleBarPrivate{window}))
{
    if (hasLogo) {
        d->bar = new QWidget(&window);
        d->bar->setObjectName(QStringLiteral("titleBar"));
        d->logo = new QLabel(d->bar);
        d->banner = new QLabel(d->bar);
        d->banner->setObjectName(QStringLiteral("banner"));
        d->banner->setTextFormat(Qt::PlainText);
        auto* layout = new QHBoxLayout(d->bar);
        layout->setContentsMargins(6, 0, 6, 0);
        layout->addWidget(d->banner);
        layout->addWidget(d->logo);
        window.menuBar()->setCornerWidget(d->bar, Qt::TopRightCorner);
    }
    titleBarOperationB();
    titleBarOperationA();
}

QtTitleBar::~QtTitleBar() = default;

void QtTitleBar::titleBarOperationA()
{
    const Application* application = Application::instance(false);
    const Document* document = application ? application->getActiveDocument() : nullptr;
    const QString program = toQt(vfBase::VfString(vfBase::ApplicationInfo::instance().getApplicationName()));
    // "[*]" is where Qt puts the mark.
    QString name = document ? toQt(document->getUserReadableName()) : QString();
    name.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
    d->window.setWindowTitle(document ? QStringLiteral("%1[*] \u2014 %2").arg(name, program) : program);
    d->window.setWindowModified(document && document->isModified());
    d->window.setWindowFilePath(document && document->alreadySaved() ? toQt(document->getFilename())
                                                                     : QString());
}

void QtTitleBar::titleBarOperationB()
{
    const vfBase::ApplicationInfo& info = vfBase::ApplicationInfo::instance();
    const QIcon icon = findPicture(toQt(vfBase::VfString(info.getApplicationIconName())));
    if (!icon.isNull())
        d->window.setWindowIcon(icon);
    if (!d->bar)
        return;
    const int size = d->banner->fontMetrics().height();
    d->logo->setPixmap(icon.pixmap(size, size));
    d->logo->setVisible(!icon.isNull());
    d->banner->setText(toQt(vfBase::VfString(info.getApplicationVendorBanner())));
    d->banner->setVisible(!d->banner->text().isEmpty());
}

} // namespace vfApplication
