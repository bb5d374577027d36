// SPDX-License-Identifier: MIT
#include "Answers.h"

#include "WindowScenario.h"

#include <velaforge/qt/internal/MainWindow.h>

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

namespace vfLife {

namespace {

QString nameOf(const QDialog& dialog)
{
    return dialog.objectName().isEmpty() ? QString::fromUtf8(dialog.metaObject()->className())
                                         : dialog.objectName();
}

void answer(QDialog& dialog)
{
    if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
        for (const auto role : {QMessageBox::DestructiveRole, QMessageBox::AcceptRole, QMessageBox::YesRole})
        {
            for (QAbstractButton* button : box->buttons()) {
                if (box->buttonRole(button) == role) {
                    button->click();
                    return;
                }
            }
        }
        box->close();
        return;
    }
    if (auto* files = qobject_cast<QFileDialog*>(&dialog);
        files && files->acceptMode() == QFileDialog::AcceptOpen)
        files->selectFile(QStringLiteral("d.obj"));
    if (dialog.objectName() == QLatin1String("commandPalette"))
        dialog.findChild<QLineEdit*>()->setText(QStringLiteral("command"));
    dialog.accept();
    if (dialog.isVisible())
        dialog.reject(); // there is nothing to accept
}

} // namespace

Answers::Answers()
{
    qApp->installEventFilter(this);
}

int Answers::count(const char* dialog) const
{
    return int(m_answered.count(QLatin1String(dialog)));
}

bool Answers::eventFilter(QObject* object, QEvent* event)
{
    // The one menu that waits for an answer.
    if (event->type() == QEvent::Show && object->objectName() == QLatin1String("panelMenu")) {
        auto* menu = static_cast<QWidget*>(object);
        QTimer::singleShot(0, menu, [] {
            Actor::instance().reach("the menu of a dock window is open", nullptr, nullptr);
            window().refreshGuarded(); // as after a command: a panel whose window was removed is deleted
        });
        QTimer::singleShot(5, menu, &QWidget::close);
    }
    auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(object) : nullptr;
    if (!dialog || !dialog->isModal())
        return false;
    // Both while the dialog waits; the second even if the first throws.
    QTimer::singleShot(0, dialog, [dialog] {
        const std::string hook = "the dialog " + nameOf(*dialog).toStdString() + " is open";
        Actor::instance().reach(hook.c_str(), nullptr, nullptr);
    });
    QTimer::singleShot(0, dialog, [this, dialog] {
        m_answered << nameOf(*dialog);
        answer(*dialog);
    });
    return false;
}

} // namespace vfLife
