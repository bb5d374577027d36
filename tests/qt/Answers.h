// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QDialog;

namespace vfLife {

/// Answers each dialog as soon as it is shown: discards, reads again, chooses what is proposed.
///
/// Before that it reaches the hook "the dialog <name> is open".
class Answers : public QObject
{
public:
    Answers();

    /// Returns the number of dialogs of a name that were answered.
    int count(const char* dialog) const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QStringList m_answered;
};

} // namespace vfLife
