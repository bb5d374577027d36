// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

namespace vfViewer {

class ModelDocument;

/// Shows in the status bar what the active model consists of, how large it is, and what is selected. Follows the shell, of
/// which there must be one.
class StatusSummary : public QObject
{
    Q_OBJECT

public:
    StatusSummary();
    ~StatusSummary() override;

private:
    void refresh();
    QString describe(const ModelDocument& document);

    unsigned long long m_state = 0; ///< of the scene that m_text describes
    QString m_text;
};

} // namespace vfViewer
