// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtView.h>

#include <velaforge/base/LifeWatch.h>
#include <velaforge/documents/Document.h>
#include <velaforge/modules/UiSetup.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/DocumentReloader.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/ViewFrame.h>
#include <velaforge/toolkit/Declarations.h>

#include <QPointer>

namespace vfApplication {

struct QtViewPrivate
{
    QPointer<ViewFrame> frame;
    QPointer<QWidget> widget;
};

QtView::QtView() : d(std::make_unique<QtViewPrivate>()) {}

QtView::~QtView()
{
    if (!d->frame)
        return;
    if (QtApplication* shell = QtApplication::instance()) {
        shell->getImp().removeFrame(*d->frame);
        // It may be an event of its own widget that closes it.
        d->frame->hide();
        d->frame->deleteLater();
    } else {
        delete d->frame;
    }
}

bool QtView::onCreate(Document* document, const vfBase::Options&)
{
    QtApplication* shell = QtApplication::instance();
    if (!shell)
        return false;
    const vfBase::LifeWatch<View> watch(this);
    const vfBase::LifeWatch<Document> documentWatch(document);
    auto frame = std::make_unique<ViewFrame>(*this);
    QWidget* widget = createWidget(*frame);
    if (!widget || watch.isGone())
        return false;
    const UiSetup* setup = applicationSetup();
    frame->setContents(*widget, setup && setup->showViewLogo(), setup && setup->showViewDocumentSlider());
    d->widget = widget;
    d->frame = frame.release();
    shell->getImp().addFrame(*d->frame);
    if (watch.isGone())
        return false;
    if (!documentWatch.isGone())
        shell->getImp().showNames(*document);
    return true;
}

void QtView::onActivateView(bool active, View*, View*)
{
    QtApplication* shell = QtApplication::instance();
    if (active && shell && d->frame)
        shell->getImp().activateFrame(*d->frame);
}

void QtView::onChangeFilename()
{
    QtApplication* shell = QtApplication::instance();
    if (!shell || !d->frame)
        return;
    shell->getImp().showNames(*getDocument());
    shell->getReloader().onNameChanged(*getDocument());
}

bool QtView::onClose(bool force)
{
    Document* document = getDocument();
    return force || !document || document->getViewList().size() > 1 || document->close();
}

void QtView::onUpdate(View*)
{
    redraw();
}

void QtView::redraw()
{
    if (d->widget)
        d->widget->update();
}

QWidget* QtView::getWidget() const
{
    return d->widget;
}

} // namespace vfApplication
