// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QString>

class QWidget;

namespace vfApplication {

/// What an options page is, beside a UiOptionsPage, to be seen in the options dialog.
///
///     class ColorsPage : public vfApplication::UiOptionsPage, public vfApplication::QtOptionsContents
///     {
///         QString getTitle() override { return tr("Colours"); }
///         QWidget* createWidget(QWidget& parent) override;  // shows what loadOptions has read
///         void applyOptions() override;                     // from the widget into the settings
///     };
///
/// The dialog has a page load its options, then make its widget. "OK" has every page apply its options, then
/// every page save them; with anything else none of the two is called, and everything stays as it was. The
/// page goes with the dialog, after its widget. A page without a widget is not shown, but loaded, applied and
/// saved with the others.
class VFAPPLICATIONQT_EXPORT QtOptionsContents
{
public:
    virtual ~QtOptionsContents();

    /// @return what its tab says, where a group has more than one page
    virtual QString getTitle() = 0;

    /// @return a new widget, a child of @p parent; null for none
    virtual QWidget* createWidget(QWidget& parent) = 0;
};

} // namespace vfApplication
