// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QDialog>
#include <QStringList>

class QListWidget;
class QPushButton;

namespace vfApplication {

/// Asks about several documents with unsaved changes at once: which of them are saved before all are closed.
class VFAPPLICATIONQT_EXPORT UnsavedDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param names  of the documents, in the order in which they are listed; each is ticked
    UnsavedDialog(QWidget* parent, const QStringList& names);

    /// Returns whether the document with that number is to be saved, once the dialog is accepted.
    bool isSaveWanted(int number) const;

private:
    void discardAll();
    void showChoice();

    QListWidget* m_list;
    QPushButton* m_save;
};

} // namespace vfApplication
