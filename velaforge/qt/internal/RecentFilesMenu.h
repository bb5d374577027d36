// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/qt/Export.h>
#include <velaforge/qt/internal/FileExistence.h>

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class QMenu;

namespace vfApplication {

/// Fills the menu of recent files, at once, and greys those that are missing when that is found out.
class VFAPPLICATIONQT_EXPORT RecentFilesMenu : public QObject
{
    Q_OBJECT

public:
    using Open = std::function<void(const vfBase::VfString& path)>;

    /// @param existence  taken over
    RecentFilesMenu(std::unique_ptr<FileExistence> existence, Open open, QObject* parent);
    ~RecentFilesMenu() override;

    void fill(QMenu& menu);

    /// Takes the entries that are known to be missing out of the list of recent files.
    void removeMissing();

private:
    void markMissing();

    std::unique_ptr<FileExistence> m_existence;
    Open m_open;
    QPointer<QMenu> m_menu;
};

} // namespace vfApplication
