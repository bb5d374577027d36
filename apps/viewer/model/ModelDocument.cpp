// SPDX-License-Identifier: MIT
#include "model/ModelDocument.h"

#include "model/ModelWriter.h"
#include "model/SceneCommands.h"
#include "reading/ReadJob.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>

namespace vfViewer {

namespace {

vfBase::VfObject* createModelDocument()
{
    return new ModelDocument;
}

vfBase::VfObject* createImageDocument()
{
    return new ImageDocument;
}

} // namespace

const vfBase::ClassInfo ModelDocument::s_classInfo("vfViewer", "ModelDocument", "vfViewer::ModelDocument",
                                                   &Document::s_classInfo, nullptr, sizeof(ModelDocument),
                                                   createModelDocument);

const vfBase::ClassInfo ImageDocument::s_classInfo("vfViewer", "ImageDocument", "vfViewer::ImageDocument",
                                                   &ModelDocument::s_classInfo, nullptr,
                                                   sizeof(ImageDocument), createImageDocument);

ModelDocument::ModelDocument() : m_scene(new ModelScene(*this)) {}

ModelDocument::~ModelDocument()
{
    m_scene->detach();
}

const vfBase::ClassInfo* ModelDocument::getClassInfo() const
{
    return &s_classInfo;
}

const char* ModelDocument::classId()
{
    return s_classInfo.getClassId();
}

bool ModelDocument::deleteContents()
{
    m_selection = nullptr;
    m_scene->setModel(nullptr);
    return true;
}

bool ModelDocument::revert()
{
    if (!Document::revert())
        return false;
    getCommandProcessor()->clearCommands();
    getCommandProcessor()->initialize();
    return true;
}

bool ModelDocument::hide(osg::Node& node)
{
    return submit(new ShowCommand(*m_scene, node, false));
}

bool ModelDocument::show(osg::Node& node)
{
    return submit(new ShowCommand(*m_scene, node, true));
}

bool ModelDocument::remove(osg::Node& node)
{
    return submit(new RemoveCommand(*m_scene, node));
}

bool ModelDocument::move(osg::Node& node, const osg::Vec3d& offset)
{
    return submit(new MoveCommand(*m_scene, node, offset));
}

bool ModelDocument::setColor(osg::Node& node, const osg::Vec4& color)
{
    return submit(new ColorCommand(*m_scene, node, color));
}

osg::Node* ModelDocument::target() const
{
    osg::Node* selected = getSelection();
    if (selected)
        return selected;
    return scene().getNumChildren() > 0 ? scene().getChild(0) : nullptr;
}

osg::Node* ModelDocument::getSelection() const
{
    return m_selection && m_scene->contains(*m_selection) ? m_selection.get() : nullptr;
}

void ModelDocument::setSelection(osg::Node* node)
{
    m_selection = node && m_scene->contains(*node) ? node : nullptr;
}

void ModelDocument::reportFailure(const vfBase::VfString& reason) const
{
    if (FailureListener* told = listener())
        told->onFailure(getFilename(), reason);
}

bool ModelDocument::submit(vfApplication::CommandPrivate* body)
{
    return getCommandProcessor()->submit(vfApplication::Command(body), true);
}

FailureListener* ModelDocument::listener() const
{
    return dynamic_cast<FailureListener*>(getDocumentManager());
}

ReadKind ModelDocument::kind() const
{
    return ReadKind::Model;
}

void ModelDocument::wait(ReadJob& job) const
{
    if (auto* waiter = dynamic_cast<ReadWaiter*>(getDocumentManager()))
        waiter->waitFor(job);
    while (!job.wait(1000)) {
    }
}

bool ModelDocument::doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    Document::doOpenDocument(path, options);
    ReadJob job(kind(), path);
    wait(job);
    const ReadOutcome outcome = job.take();
    if (outcome.isCancelled)
        return false;
    FailureListener* listener = this->listener();
    if (!outcome.scene) {
        if (listener)
            listener->onFailure(path, outcome.reason);
        return false;
    }
    if (listener) {
        for (const std::string& warning : outcome.warnings)
            listener->onWarning(path, warning);
        for (const std::string& detail : outcome.details)
            listener->onDetail(path, detail);
    }
    for (const auto& [points, outline] : outcome.outlines)
        rememberOutline(*points, outline);
    m_scene->setModel(outcome.scene);
    return true;
}

vfBase::WriteResult ModelDocument::doSaveDocument(const vfBase::VfString& path,
                                                  const vfBase::Options& options)
{
    Document::doSaveDocument(path, options);
    vfBase::VfString reason;
    if (writeModel(scene(), path, reason))
        return vfBase::WriteResult::Written;
    if (FailureListener* told = listener())
        told->onFailure(path, reason);
    return vfBase::WriteResult(vfBase::WriteResult::WriteFailed, reason);
}

const vfBase::ClassInfo* ImageDocument::getClassInfo() const
{
    return &s_classInfo;
}

ReadKind ImageDocument::kind() const
{
    return ReadKind::Image;
}

} // namespace vfViewer
