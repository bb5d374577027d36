// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/StatusBarInterface.h>
#include <velaforge/shell/TitleBarInterface.h>
#include <velaforge/shell/ToolbarInterface.h>

#include <map>

namespace vfApplication {

/// A status bar that nobody sees: it keeps what it would show.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessStatusBar : public StatusBarInterface
{
public:
    struct Field
    {
        vfBase::VfString text;
        int value = 0;
    };

    HeadlessStatusBar();
    ~HeadlessStatusBar() override;

    /// Null empties the field.
    void updateStatus(StatusBarTextEnum kind, const char* text, int value) override;

    /// What is below 0 or above 100 counts as that.
    void updateProgressPercent(int percent) override;
    void updateProgressText(const char* text) override;

    /// @return what was told last, an empty field before
    Field getField(StatusBarTextEnum kind) const;
    int getProgressPercent() const { return m_percent; }
    const vfBase::VfString& getProgressText() const { return m_progressText; }

private:
    std::map<StatusBarTextEnum, Field> m_fields;
    int m_percent = 0;
    vfBase::VfString m_progressText;
};

/// A toolbar that nobody sees: it keeps what was declared, and whether it is shown.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessToolbar : public ToolbarInterface
{
public:
    /// @param declaration  what a UiSetup declared below the root of its toolbars; shared
    HeadlessToolbar(const CommandItem& declaration) : m_declaration(declaration) {}

    /// Shows the toolbar, and hides it.
    void toolbarOperationA() override { m_isShown = true; }
    void toolbarOperationB() override { m_isShown = false; }

    /// Nothing here.
    void toolbarOperationC() override {}
    void toolbarOperationD() override {}

    const CommandItem& getDeclaration() const { return m_declaration; }
    bool isShown() const { return m_isShown; }

private:
    CommandItem m_declaration;
    bool m_isShown = true;
};

/// A title bar that nobody sees: it keeps the title.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessTitleBar : public TitleBarInterface
{
public:
    /// Makes the title anew: the name of the active document, marked when it is modified, and that of the program.
    void titleBarOperationA() override;

    /// Nothing here.
    void titleBarOperationB() override {}

    const vfBase::VfString& getTitle() const { return m_title; }

private:
    vfBase::VfString m_title;
};

} // namespace vfApplication
