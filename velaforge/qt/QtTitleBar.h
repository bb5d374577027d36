// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>
#include <velaforge/shell/TitleBarInterface.h>

#include <memory>

class QMainWindow;

namespace vfApplication {

struct QtTitleBarPrivate;

/// What the main window calls itself, and the bar with the logo at the right end of its menu bar.
///
/// The bar shows the icon of the application and the vendor's banner, as far as ApplicationInfo has them. It
/// is there unless the application's UiSetup::showTitleBarLogo says no.
class VFAPPLICATIONQT_EXPORT QtTitleBar final : public TitleBarInterface
{
public:
    /// Makes the title bar of @p window, with the logo if @p hasLogo is true.
    QtTitleBar(QMainWindow& window, bool hasLogo);
    ~QtTitleBar();

    QtTitleBar(const QtTitleBar&) = delete;
    QtTitleBar& operator=(const QtTitleBar&) = delete;

    /// Makes the title anew: the name of the active document, marked when it is modified, and that of the
    /// program.
    void titleBarOperationA() override;

    /// Makes the logo anew, after ApplicationInfo was changed.
    void titleBarOperationB() override;

private:
    std::unique_ptr<QtTitleBarPrivate> d;
};

} // namespace vfApplication
