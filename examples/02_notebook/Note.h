// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>

#include <string>
#include <vector>

/// A text file, line by line.
class Note : public vfApplication::Document
{
public:
    static const vfBase::ClassInfo s_classInfo;

    void setLines(const std::vector<std::string>& lines);
    const std::vector<std::string>& lines() const { return m_lines; }
    void concreteDocumentOperation() override {}

protected:
    bool doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options) override;
    vfBase::WriteResult doSaveDocument(const vfBase::VfString& path, const vfBase::Options& options) override;

private:
    std::vector<std::string> m_lines;
};

/// Shows a note on the terminal, each time it changes.
class Page : public vfApplication::View
{
public:
    static const vfBase::ClassInfo s_classInfo;

    bool onCreate(vfApplication::Document* document, const vfBase::Options& options) override;
    void onUpdate(vfApplication::View* sender) override;
};
