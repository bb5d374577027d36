// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/OptionsDialog.h>

#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtOptionsContents.h>
#include <velaforge/qt/internal/Icons.h>
#include <velaforge/qt/internal/Reasons.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/toolkit/Declarations.h>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vfApplication {

QtOptionsContents::~QtOptionsContents() = default;

OptionsDialog::OptionsDialog(QWidget& parent)
    : QDialog(&parent), m_groups(new QListWidget(this)), m_stack(new QStackedWidget(this))
{
    setObjectName(QStringLiteral("options"));
    setWindowTitle(tr("Options"));
    m_groups->setObjectName(QStringLiteral("groups"));
    m_groups->setMaximumWidth(fontMetrics().averageCharWidth() * 24);
    m_groups->setIconSize(QSize(24, 24));
    connect(m_groups, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);
    for (auto& page : orderedOptionsPages())
        m_pages.push_back(std::move(page));
    try {
        for (const auto& page : m_pages) {
            page->loadOptions();
            addPage(*page);
        }
    } catch (...) {
        delete m_stack; // as in the destructor
        throw;
    }
    if (m_groups->count() == 0)
        m_stack->addWidget(new QLabel(tr("There is nothing to choose."), m_stack));
    m_groups->setVisible(m_groups->count() > 0);
    m_groups->setCurrentRow(0);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &OptionsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &OptionsDialog::reject);
    auto* upper = new QHBoxLayout;
    upper->addWidget(m_groups);
    upper->addWidget(m_stack, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(upper);
    layout->addWidget(buttons);
    resize(640, 420);
}

OptionsDialog::~OptionsDialog()
{
    // Widgets may look at their pages to the end.
    delete m_stack;
}

void OptionsDialog::addPage(UiOptionsPage& page)
{
    auto* contents = dynamic_cast<QtOptionsContents*>(&page);
    QWidget* widget = contents ? contents->createWidget(*m_stack) : nullptr;
    if (!widget)
        return;
    const QString name = toQt(vfBase::VfString(page.getGroupName()));
    const QList<QListWidgetItem*> known =
        m_groups->findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
    QTabWidget* tabs = nullptr;
    if (known.isEmpty()) {
        m_groups->addItem(
            new QListWidgetItem(findIcon(toQt(vfBase::VfString(page.getGroupIconName()))), name));
        tabs = new QTabWidget(m_stack);
        tabs->setDocumentMode(true);
        tabs->setTabBarAutoHide(true);
        m_stack->addWidget(tabs);
    } else {
        tabs = static_cast<QTabWidget*>(m_stack->widget(m_groups->row(known.first())));
    }
    tabs->addTab(widget, contents->getTitle());
}

void OptionsDialog::accept()
{
    try {
        for (const auto& page : m_pages)
            page->applyOptions();
        for (const auto& page : m_pages)
            page->saveOptions();
    } catch (...) {
        if (QtApplication* shell = QtApplication::instance())
            shell->showProblem(fromQt(windowTitle()), fromQt(currentReason()));
        return;
    }
    QDialog::accept();
}

} // namespace vfApplication
