// SPDX-License-Identifier: MIT
#include "qt/PicturePrompt.h"

#include "model/ModelDocument.h"
#include "model/NamedCommands.h"
#include "qt/QtModelView.h"

#include <velaforge/application/Application.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/headless/OffscreenRenderer.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QPushButton>
#include <QSpinBox>

#include <algorithm>
#include <cmath>

namespace vfViewer {

namespace {

class PictureDialog : public QDialog
{
    Q_DECLARE_TR_FUNCTIONS(vfViewer::PictureDialog)

public:
    PictureDialog(QWidget& window, const QSize& size, const QString& proposal)
        : QDialog(&window), m_shape(double(size.width()) / size.height()), m_path(proposal)
    {
        setObjectName(QStringLiteral("pictureDialog"));
        setWindowTitle(tr("Save picture"));
        m_width = makeSize("pictureWidth", size.width());
        m_height = makeSize("pictureHeight", size.height());
        m_keepsShape = new QCheckBox(tr("As wide for its height as the view"), this);
        m_keepsShape->setObjectName(QStringLiteral("pictureShape"));
        m_keepsShape->setChecked(true);
        m_isTransparent = new QCheckBox(tr("Nothing behind the model"), this);
        m_isTransparent->setObjectName(QStringLiteral("pictureTransparent"));
        connect(m_width, &QSpinBox::valueChanged, this,
                [this](int width) { follow(*m_height, width / m_shape); });
        connect(m_height, &QSpinBox::valueChanged, this,
                [this](int height) { follow(*m_width, height * m_shape); });
        connect(m_keepsShape, &QCheckBox::toggled, this,
                [this] { follow(*m_height, m_width->value() / m_shape); });
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
        connect(buttons, &QDialogButtonBox::accepted, this, &PictureDialog::chooseFile);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        auto* form = new QFormLayout(this);
        form->addRow(tr("Width:"), m_width);
        form->addRow(tr("Height:"), m_height);
        form->addRow(m_keepsShape);
        form->addRow(m_isTransparent);
        form->addRow(buttons);
    }

    /// @return what the command takes
    QString argument() const
    {
        return QStringLiteral("%1x%2%3 %4")
            .arg(m_width->value())
            .arg(m_height->value())
            .arg(m_isTransparent->isChecked() ? QStringLiteral(",transparent") : QString(), m_path);
    }

private:
    QSpinBox* makeSize(const char* name, int pixels)
    {
        auto* box = new QSpinBox(this);
        box->setObjectName(QLatin1String(name));
        box->setRange(1, vfApplication::OffscreenRenderer::sizeLimit);
        box->setSuffix(tr(" pixels"));
        box->setValue(pixels);
        return box;
    }

    void follow(QSpinBox& other, double pixels)
    {
        if (!m_keepsShape->isChecked())
            return;
        const QSignalBlocker blocker(other);
        other.setValue(int(std::lround(pixels)));
    }

    void chooseFile()
    {
        const QString formats = m_isTransparent->isChecked()
                                    ? QStringLiteral("*.png *.tga *.tif")
                                    : QStringLiteral("*.png *.jpg *.bmp *.tga *.tif");
        const QString path = QFileDialog::getSaveFileName(
            this, windowTitle(), m_path, tr("Pictures") + QStringLiteral(" (%1)").arg(formats));
        if (path.isEmpty())
            return;
        m_path = path;
        accept();
    }

    double m_shape;
    QString m_path;
    QSpinBox* m_width = nullptr;
    QSpinBox* m_height = nullptr;
    QCheckBox* m_keepsShape = nullptr;
    QCheckBox* m_isTransparent = nullptr;
};

/// @return the size of the current view in pixels
QSize sizeOfView()
{
    const auto* view = dynamic_cast<QtModelView*>(
        vfApplication::Application::instance(false)->getDocManager().getCurrentView());
    const vfApplication::QtViewport* viewport = view ? view->getViewport() : nullptr;
    const QSize size =
        viewport ? (QSizeF(viewport->size()) * viewport->devicePixelRatioF()).toSize() : QSize();
    return size.isEmpty() ? QSize(1280, 800) : size;
}

} // namespace

bool askForPicture(QWidget& window, const vfApplication::Command::Properties&, vfBase::VfVariant& argument)
{
    const ModelDocument* document = activeModel();
    if (!document)
        return false;
    const QFileInfo file(QString::fromStdString(document->getFilename().str()));
    PictureDialog dialog(window, sizeOfView(),
                         file.absolutePath() + QLatin1Char('/') + file.completeBaseName() +
                             QStringLiteral(".png"));
    if (dialog.exec() != QDialog::Accepted)
        return false;
    argument = vfBase::VfVariant(dialog.argument().toStdString().c_str());
    return true;
}

} // namespace vfViewer
