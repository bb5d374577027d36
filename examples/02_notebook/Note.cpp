// SPDX-License-Identifier: MIT
#include "Note.h"

#include "OptionsPage.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/ReplaceFile.h>
#include <velaforge/documents/ReadError.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

using vfBase::WriteResult;

// What makes the classes known by name, and creates their objects.
const vfBase::ClassInfo Note::s_classInfo("notebook", "Note", "notebook::Note", &Document::s_classInfo,
                                          nullptr, sizeof(Note), []() -> VfObject* { return new Note; });
const vfBase::ClassInfo Page::s_classInfo("notebook", "Page", "notebook::Page", &View::s_classInfo, nullptr,
                                          sizeof(Page), []() -> VfObject* { return new Page; });

void Note::setLines(const std::vector<std::string>& lines)
{
    m_lines = lines;
    modify(true);            // there is something to save
    updateAllViews(nullptr); // and something new to show
}

bool Note::doOpenDocument(const vfBase::VfString& path, const vfBase::Options&)
{
    std::ifstream file(path.str());
    if (!file)
        return vfApplication::setReadError(std::strerror(errno)); // what the user is told
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        // The same from far down: this file is not opened, and the others are.
        if (line.find('\0') != std::string::npos)
            throw vfApplication::ReadError("line " + std::to_string(lines.size() + 1) + " is not text");
        lines.push_back(line);
    }
    if (!file.eof())
        return vfApplication::setReadError("it could not be read to its end");
    m_lines = lines; // last, so that a note that cannot be read again stays as it is
    return true;
}

WriteResult Note::doSaveDocument(const vfBase::VfString& path, const vfBase::Options&)
{
    // The file is replaced as a whole or stays as it was.
    std::string text;
    for (const std::string& line : m_lines)
        text += line + '\n';
    vfBase::VfString reason;
    if (vfBase::replaceFile(path, text, reason))
        return WriteResult::Written;
    return WriteResult(WriteResult::WriteFailed, reason);
}

bool Page::onCreate(vfApplication::Document* document, const vfBase::Options&)
{
    return dynamic_cast<Note*>(document) != nullptr;
}

void Page::onUpdate(vfApplication::View*)
{
    int number = 0;
    for (const std::string& line : static_cast<Note*>(getDocument())->lines()) {
        if (NotebookSettings::instance().getShowsNumbers())
            std::cout << ++number << ": ";
        std::cout << line << '\n';
    }
    std::cout << "--" << std::endl;
}
