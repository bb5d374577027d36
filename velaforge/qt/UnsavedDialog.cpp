// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/UnsavedDialog.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace vfApplication {

UnsavedDialog::UnsavedDialog(QWidget* parent, const QStringList& names)
    : QDialog(parent), m_list(new QListWidget(this))
{
    setObjectName(QStringLiteral("unsavedDocuments"));
    setWindowTitle(tr("Unsaved changes"));
    for (const QString& name : names) {
        auto* item = new QListWidgetItem(name, m_list);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
    auto* heading = new QLabel(
        tr("These documents have changes that are not saved. Which of them are to be saved?"), this);
    heading->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(
        QDialogButtonBox::Save | QDialogButtonBox::Discard | QDialogButtonBox::Cancel, this);
    m_save = buttons->button(QDialogButtonBox::Save);
    m_save->setDefault(true);
    buttons->button(QDialogButtonBox::Discard)->setText(tr("&Discard all"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::Discard), &QPushButton::clicked, this,
            &UnsavedDialog::discardAll);
    connect(m_list, &QListWidget::itemChanged, this, &UnsavedDialog::showChoice);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    showChoice();
}

bool UnsavedDialog::isSaveWanted(int number) const
{
    return m_list->item(number)->checkState() == Qt::Checked;
}

void UnsavedDialog::discardAll()
{
    for (int i = 0; i < m_list->count(); ++i)
        m_list->item(i)->setCheckState(Qt::Unchecked);
    accept();
}

/// Says on the button what it does with the others.
void UnsavedDialog::showChoice()
{
    int saved = 0;
    for (int i = 0; i < m_list->count(); ++i)
        saved += isSaveWanted(i) ? 1 : 0;
    m_save->setEnabled(saved > 0);
    m_save->setText(saved == m_list->count() ? tr("&Save all") : tr("&Save these, discard the others"));
}

} // namespace vfApplication
