// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QTabBar>
#include <QTabWidget>

namespace vfApplication {

/// The tabs of the open documents. A tab is never too small to read: where there is no room for all, buttons scroll. A right
/// click opens a menu, a middle click closes.
class VFAPPLICATIONQT_EXPORT DocumentTabs : public QTabWidget
{
    Q_OBJECT

public:
    /// Makes tabs without pages, as a child of @p parent.
    explicit DocumentTabs(QWidget* parent);

    /// Sets what the tab of @p page says. @p path is the file of the document, empty if it has none: the tool tip, and what
    /// the menu copies.
    void setTitle(QWidget& page, const QString& title, const QString& path, bool isModified);

private:
    void showMenu(const QPoint& position);
    void closeOthers(QWidget& kept);
};

/// The tab bar of DocumentTabs.
class DocumentTabBar : public QTabBar
{
    Q_OBJECT

public:
    /// Makes a bar without tabs, as a child of @p parent.
    explicit DocumentTabBar(QWidget* parent);

protected:
    /// Returns the size of a tab: wide enough for the beginning and the end of its text.
    QSize tabSizeHint(int index) const override;

    /// Returns the same as tabSizeHint(), so that tabs scroll rather than shrink.
    QSize minimumTabSizeHint(int index) const override;

    /// Closes with the middle button.
    void mouseReleaseEvent(QMouseEvent* event) override;
};

} // namespace vfApplication
