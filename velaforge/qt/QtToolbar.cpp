// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtToolbar.h>

#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/MenuBuilder.h>

#include <QToolBar>

namespace vfApplication {

QtToolbar::QtToolbar(QToolBar& bar, const CommandItem& declaration) : m_bar(&bar), m_declaration(declaration)
{
    toolbarOperationD();
}

void QtToolbar::toolbarOperationA()
{
    m_bar->show();
}

void QtToolbar::toolbarOperationB()
{
    m_bar->hide();
}

void QtToolbar::toolbarOperationC()
{
    if (QtApplication* shell = QtApplication::instance())
        shell->updateActions();
}

void QtToolbar::toolbarOperationD()
{
    m_bar->setWindowTitle(MenuBuilder::title(m_declaration));
}

} // namespace vfApplication
