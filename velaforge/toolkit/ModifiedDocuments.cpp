// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/ModifiedDocuments.h>

#include <velaforge/base/Vector.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>

#include <vector>

namespace vfApplication {

void followHistories(DocManager& manager)
{
    // modify() calls a view, which may close documents.
    const vfBase::Vector<Document*>& open = manager.getDocumentList();
    const std::vector<Document*> documents(open.begin(), open.end());
    for (Document* document : documents) {
        if (!manager.containsDocument(document) || !document->isModified())
            continue;
        const CommandProcessor* history = document->getCommandProcessor();
        if (history && history->isAtUnmodifiedState())
            document->modify(false);
    }
}

} // namespace vfApplication
