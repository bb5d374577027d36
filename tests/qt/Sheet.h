// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/documents/Document.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/qt/QtView.h>

#include <functional>
#include <string>
#include <vector>

namespace vfTest {

/// A text file, line by line, with the command "sheet::AddLine" that can be undone.
///
/// A file whose first line is "bad" cannot be read, one with "reason" says why not, and those with "throw" and "number"
/// throw an exception and a number. With the first line "thorn" it throws when it is closed, with the last line "burns" when
/// it is saved, and with "full" it cannot be saved. Other commands: "sheet::Fail" is a change that fails, "sheet::Throw"
/// throws, and with the argument "number" a number, "sheet::Switch" turns a switch that it shows as a check mark,
/// "sheet::Unmade" cannot be made while isUnmade is set.
class Sheet : public vfApplication::Document
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    void concreteDocumentOperation() override {}

    std::vector<std::string> lines;
    int reads = 0;

    /// All lines with line ends.
    std::string text() const;
    void changed();

    static bool isSwitchOn;
    static bool isUnmade;

    bool deleteContents() override;

protected:
    bool doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options) override;
    vfBase::WriteResult doSaveDocument(const vfBase::VfString& path, const vfBase::Options& options) override;
};

/// Shows a sheet in a text field that can only be read.
class SheetView : public vfApplication::QtView
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    void onUpdate(vfApplication::View* sender) override;

protected:
    QWidget* createWidget(QWidget& parent) override;
};

/// A declaration that is put together by the test.
class SheetUi : public vfApplication::MinimalUiSetup
{
public:
    using Declare = std::function<void(vfApplication::CommandItem* root)>;

    DocumentInterfaceMode mode = TabbedDocuments;
    bool hasViewButtons = true;
    bool hasViewLogo = false;
    bool hasSlider = false;
    bool hasTitleLogo = true;
    Declare menus;
    Declare toolbars;
    std::function<void(const std::string& viewName, vfApplication::CommandItem* root)> viewMenus;

    DocumentInterfaceMode getDocumentIntefaceMode() override { return mode; }
    bool showViewTitleButtons() const override { return hasViewButtons; }
    bool showViewLogo() const override { return hasViewLogo; }
    bool showViewDocumentSlider() const override { return hasSlider; }
    bool showTitleBarLogo() const override { return hasTitleLogo; }
    void setupMenus(vfApplication::CommandItem* root) override;
    void setupViewMenus(const char* viewName, vfApplication::CommandItem* root) override;
    void setupToolbars(vfApplication::CommandItem* root) override;
};

} // namespace vfTest
