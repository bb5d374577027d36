// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QString>

#include <memory>

class QSplashScreen;
class QWidget;

namespace vfApplication {

/// The picture that shows while the program starts, with the text where ApplicationSettings wants it.
///
/// Alignments are "LEFT", "CENTER" or "RIGHT" and "TOP", "CENTER" or "BOTTOM", in any case; anything else counts as the
/// default.
class VFAPPLICATIONQT_EXPORT Splash
{
public:
    Splash();
    ~Splash();

    /// Shows the picture of ApplicationInfo::getSplashImageName; nothing where there is none.
    void show();

    /// @return false while no picture shows
    bool showText(const QString& text);

    /// Goes when @p window has come.
    void finish(QWidget& window);

    /// @return the flags for the alignments as they are set
    static int alignment();

private:
    std::unique_ptr<QSplashScreen> m_screen;
};

} // namespace vfApplication
