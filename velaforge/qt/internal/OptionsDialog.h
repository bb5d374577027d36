// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>
#include <velaforge/shell/UiOptionsPage.h>

#include <QDialog>

#include <memory>
#include <vector>

class QDialogButtonBox;
class QListWidget;
class QStackedWidget;

namespace vfApplication {

/// The options pages: their groups at the left, the pages of a group behind tabs.
class VFAPPLICATIONQT_EXPORT OptionsDialog : public QDialog
{
    Q_OBJECT

public:
    /// Makes the pages that are announced, by group and order, and has them load their options.
    explicit OptionsDialog(QWidget& parent);
    ~OptionsDialog() override;

    void accept() override;

private:
    void addPage(UiOptionsPage& page);

    std::vector<std::unique_ptr<UiOptionsPage>> m_pages;
    QListWidget* m_groups;
    QStackedWidget* m_stack;
};

} // namespace vfApplication
