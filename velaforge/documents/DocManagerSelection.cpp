// SPDX-License-Identifier: MIT
// The part of DocManager that chooses templates.
#include <velaforge/application/Application.h>
#include <velaforge/base/StringList.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>

#include <osgDB/FileNameUtils>

#include <algorithm>
#include <string>
#include <vector>

namespace vfApplication {

namespace {

/// The candidates in the order found, in an array as long as the input, and the text by which each is sorted.
struct Candidates
{
    explicit Candidates(int count) : templates(static_cast<std::size_t>(std::max(count, 0)), nullptr) {}

    std::size_t size() const { return texts.size(); }
    void add(DocTemplate* candidate, const vfBase::VfString& text)
    {
        templates[size()] = candidate;
        texts.push_back(text);
    }

    /// Sorts the texts by byte, then looks up the template of each again: the last of the input with that
    /// text, visible or not.
    template <class Text>
    void sort(DocTemplate** input, int count, Text text)
    {
        std::sort(texts.begin(), texts.end());
        for (std::size_t place = 0; place < texts.size(); ++place) {
            for (int i = 0; i < count; ++i) {
                if (texts[place] == text(*input[i]).str())
                    templates[place] = input[i];
            }
        }
    }

    std::vector<DocTemplate*> templates;
    std::vector<std::string> texts;
};

} // namespace

DocTemplate* DocManager::findTemplateForPath(const char* path)
{
    const std::string name(path ? path : "");
    const std::string extension = osgDB::getLowerCaseFileExtension(name);
    const vfBase::Vector<DocTemplate*> templates = getTemplates();
    for (unsigned int i = 0; i < templates.size(); ++i) {
        if (osgDB::convertToLowerCase(templates.at(i)->getDefaultExtension()) == extension)
            return templates.at(i);
    }
    for (unsigned int i = 0; i < templates.size(); ++i) {
        DocTemplate* candidate = templates.at(i);
        if (candidate->fileMatchesTemplate(name))
            return candidate;
    }
    return nullptr;
}

DocTemplate* DocManager::getNativeTemplate() const
{
    for (unsigned int i = 0; i < m_templates.size(); ++i) {
        if (m_templates.at(i)->getFlags() & DocTemplate::Native)
            return m_templates.at(i);
    }
    return nullptr;
}

DocTemplate* DocManager::selectDocumentPath(DocTemplate**, int, vfBase::VfString&, bool)
{
    return nullptr;
}

DocTemplate* DocManager::selectDocumentType(DocTemplate** templates, int count, bool sort)
{
    Candidates kept(count);
    for (int i = 0; i < count; ++i) {
        DocTemplate* candidate = templates[i];
        if (!candidate->isVisible())
            continue;
        const auto end = kept.templates.begin() + static_cast<std::ptrdiff_t>(kept.size());
        const bool duplicate = std::any_of(kept.templates.begin(), end, [&](const DocTemplate* other) {
            return other->getDocumentName() == candidate->getDocumentName() &&
                   other->getViewName() == candidate->getViewName();
        });
        if (!duplicate)
            kept.add(candidate, candidate->getDescription());
    }
    if (sort)
        kept.sort(templates, count, [](const DocTemplate& entry) { return entry.getDescription(); });
    if (kept.size() == 0)
        return nullptr;
    if (kept.size() == 1)
        return kept.templates.front();
    return selectDocumentTypeUser(kept.templates.data(), count);
}

DocTemplate* DocManager::selectDocumentTypeUser(DocTemplate**, int)
{
    return nullptr;
}

DocTemplate* DocManager::selectViewType(DocTemplate** templates, int count, bool sort)
{
    Candidates kept(count);
    for (int i = 0; i < count; ++i) {
        DocTemplate* candidate = templates[i];
        const vfBase::VfString viewName = candidate->getViewName();
        if (!candidate->isVisible() || viewName.empty())
            continue;
        if (std::find(kept.texts.begin(), kept.texts.end(), viewName.str()) == kept.texts.end())
            kept.add(candidate, viewName);
    }
    if (sort)
        kept.sort(templates, count, [](const DocTemplate& entry) { return entry.getViewName(); });
    return kept.size() == 1 ? kept.templates.front() : nullptr;
}

vfBase::VfString DocManager::selectDocumentSavePath(const char*, const char*, const char*, const char*,
                                                    vfBase::Options&)
{
    return vfBase::VfString();
}

vfBase::VfString DocManager::getNameFilters(int mask, char separator, const char* prefix) const
{
    const Application* application = Application::instance(false);
    const vfBase::Vector<DocTemplate*> templates =
        application ? application->getDocManager().getTemplates() : getTemplates();
    std::string filters;
    for (unsigned int i = 0; i < std::min(m_templates.size(), templates.size()); ++i) {
        const DocTemplate* documentTemplate = templates.at(i);
        if (!(mask & documentTemplate->getFlags()))
            continue;
        const vfBase::StringList items = documentTemplate->getFileFilter().split(',');
        for (unsigned int item = 0; item < items.size(); ++item)
            filters += (prefix ? prefix : "") + items.get(item).str() + separator;
    }
    return filters;
}

} // namespace vfApplication
