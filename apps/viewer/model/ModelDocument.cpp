// SPDX-License-Identifier: MIT
#include "model/ModelDocument.h"

#include "model/ModelView.h"
#include "model/ViewerSettings.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/View.h>
#include <velaforge/formats/FormatLosses.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/ReadJob.h>
#include <velaforge/formats/WriteJob.h>
#include <velaforge/scene/CameraBookmarks.h>
#include <velaforge/scene/SceneCommands.h>

#include <osgDB/FileNameUtils>

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

ModelDocument::ModelDocument() : m_scene(new vfScene::ModelScene(this)), m_animation(*m_scene)
{
    takeSettings();
}

ModelDocument::~ModelDocument()
{
    m_scene->detach();
}

void ModelDocument::onSceneChanged(bool isPreview)
{
    if (!isPreview)
        modify(true);
    updateAllViews(nullptr);
}

vfApplication::Recovery::Snapshot ModelDocument::recoverySnapshot() const
{
    vfApplication::Recovery::Snapshot snapshot;
    snapshot.state = m_scene->getState();
    snapshot.identity = m_fileIdentity;
    snapshot.getWriter = [this] {
        // Commands replace arrays and do not write to them, so the copy shares them. Animations do write.
        osg::CopyOp::CopyFlags flags = osg::CopyOp::DEEP_COPY_NODES | osg::CopyOp::DEEP_COPY_DRAWABLES |
                                       osg::CopyOp::DEEP_COPY_STATESETS |
                                       osg::CopyOp::DEEP_COPY_STATEATTRIBUTES;
        if (!m_animation.isEmpty())
            flags |= osg::CopyOp::DEEP_COPY_ARRAYS | osg::CopyOp::DEEP_COPY_PRIMITIVES |
                     osg::CopyOp::DEEP_COPY_CALLBACKS;
        const osg::CopyOp copy(flags);
        osg::Node* model = scene().getNumChildren() == 1 ? scene().getChild(0) : &scene();
        return [model = osg::ref_ptr<osg::Node>(osg::clone(model, copy))](const std::string& path) {
            return vfFormats::writeModel(*model, path).isWritten;
        };
    };
    return snapshot;
}

void ModelDocument::takeSettings()
{
    constexpr std::size_t megabyte = 1000000;
    m_scene->setHistoryLimit(megabyte *
                             static_cast<std::size_t>(ViewerSettings::instance().getHistoryMegabytes()));
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
    m_measurements.clear();
    m_scene->setModel(nullptr);
    m_animation.reset();
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
    return submit(new vfScene::ShowCommand(*m_scene, node, false));
}

bool ModelDocument::show(osg::Node& node)
{
    return submit(new vfScene::ShowCommand(*m_scene, node, true));
}

bool ModelDocument::remove(osg::Node& node)
{
    return submit(new vfScene::RemoveCommand(*m_scene, node));
}

bool ModelDocument::move(osg::Node& node, const osg::Vec3d& offset)
{
    return transform(node, "Move", osg::Matrixd::translate(offset));
}

bool ModelDocument::transform(osg::Node& node, const char* name, const osg::Matrixd& matrix)
{
    return submit(new vfScene::TransformCommand(name, *m_scene, node, matrix));
}

bool ModelDocument::rename(osg::Node& node, const std::string& name)
{
    return submit(new vfScene::RenameCommand(*m_scene, node, name));
}

bool ModelDocument::setColor(osg::Node& node, const osg::Vec4& color)
{
    return submit(new vfScene::ColorCommand(*m_scene, node, color));
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
    osg::Node* selected = node && m_scene->contains(*node) ? node : nullptr;
    if (selected == m_selection.get())
        return;
    m_selection = selected;
    updateAllViews(nullptr);
}

void ModelDocument::addMeasurement(const vfScene::Measurement& measurement)
{
    m_measurements.push_back(measurement);
    updateAllViews(nullptr);
}

void ModelDocument::clearMeasurements()
{
    m_measurements.clear();
    updateAllViews(nullptr);
}

bool ModelDocument::play(bool isWanted)
{
    auto* keeper = dynamic_cast<TimeKeeper*>(getDocumentManager());
    if (!keeper || m_animation.isEmpty())
        return false;
    m_animation.setPlaying(isWanted);
    if (isWanted)
        keeper->keepTime();
    return true;
}

void ModelDocument::setAnimationTime(double seconds)
{
    m_animation.setTime(seconds);
    for (vfApplication::View* view : getViewList()) {
        if (auto* shown = dynamic_cast<ModelView*>(view))
            shown->follow();
    }
}

vfScene::Units ModelDocument::getUnits() const
{
    return m_units.value_or(ViewerSettings::instance().getUnits());
}

void ModelDocument::setUnits(const vfScene::Units& units)
{
    m_units = units;
    updateAllViews(nullptr);
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

vfFormats::ReadKind ModelDocument::kind() const
{
    return vfFormats::ReadKind::Model;
}

void ModelDocument::wait(vfIsolation::Job& job, bool isSaving) const
{
    if (auto* waiter = dynamic_cast<JobWaiter*>(getDocumentManager()))
        waiter->waitFor(job, isSaving);
    while (!job.wait(1000)) {
    }
}

vfFormats::ReadOutcome ModelDocument::read(vfFormats::ReadKind readKind, const vfBase::VfString& path) const
{
    vfFormats::ReadJob job(readKind, path);
    wait(job, false);
    vfFormats::ReadOutcome outcome = job.take();
    FailureListener* told = listener();
    if (told && !outcome.scene && !outcome.isCancelled)
        told->onFailure(path, outcome.reason);
    if (told && outcome.scene) {
        for (const std::string& warning : outcome.warnings)
            told->onWarning(path, warning);
        for (const std::string& detail : outcome.details)
            told->onDetail(path, detail);
    }
    for (const auto& [points, hull] : outcome.hulls)
        vfScene::rememberHull(*points, hull);
    return outcome;
}

bool ModelDocument::doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    Document::doOpenDocument(path, options);
    const vfBase::FileIdentity before =
        vfBase::FileIdentity::of(path.str()); // another program may change it while it is read
    const vfFormats::ReadOutcome outcome = read(kind(), path);
    if (outcome.scene) {
        m_fileIdentity = before;
        m_scene->setModel(outcome.scene);
        m_animation.reset();
        m_otherFiles = outcome.files;
    }
    return outcome.scene.valid();
}

namespace {

/// @return where a node hangs first: for each step down, which child it is, and its name
ModelDocument::Look::Place placeOf(const osg::Node& node, const osg::Group& root)
{
    ModelDocument::Look::Place place;
    const osg::NodePathList paths = node.getParentalNodePaths(const_cast<osg::Group*>(&root));
    for (std::size_t i = 1; !paths.empty() && i < paths[0].size(); ++i)
        place.emplace_back(paths[0][i - 1]->asGroup()->getChildIndex(paths[0][i]), paths[0][i]->getName());
    return place;
}

/// @return the child of that name nearest to the number; null when there is none
osg::Node* findChild(osg::Group& group, unsigned int number, const std::string& name)
{
    osg::Node* found = nullptr;
    unsigned int distance = ~0u;
    for (unsigned int i = 0; i < group.getNumChildren(); ++i) {
        const unsigned int away = i > number ? i - number : number - i;
        if (group.getChild(i)->getName() == name && away < distance) {
            found = group.getChild(i);
            distance = away;
        }
    }
    return found;
}

osg::Node* findPlace(osg::Group& root, const ModelDocument::Look::Place& place)
{
    osg::Node* node = &root;
    for (const auto& [number, name] : place)
        node = node && node->asGroup() ? findChild(*node->asGroup(), number, name) : nullptr;
    return place.empty() ? nullptr : node;
}

} // namespace

ModelDocument::Look ModelDocument::getLook() const
{
    Look look;
    for (const osg::ref_ptr<osg::Node>& node : m_scene->hiddenNodes())
        look.hidden.push_back(placeOf(*node, scene()));
    if (const osg::Node* selected = getSelection())
        look.selected = placeOf(*selected, scene());
    return look;
}

void ModelDocument::restoreLook(const Look& look)
{
    for (const Look::Place& place : look.hidden) {
        if (osg::Node* node = findPlace(scene(), place))
            node->setNodeMask(0);
    }
    if (look.selected)
        setSelection(findPlace(scene(), *look.selected));
    updateAllViews(nullptr);
}

std::vector<osg::ref_ptr<osg::Node>>
ModelDocument::readModels(const std::vector<vfBase::VfString>& paths) const
{
    std::vector<osg::ref_ptr<osg::Node>> models;
    for (const vfBase::VfString& path : paths) {
        const std::string reason = path.empty() ? "this is no file name" : vfFormats::readError(path);
        if (!reason.empty() || !(vfFormats::isModelFile(path) || vfFormats::isImageFile(path))) {
            if (FailureListener* told = listener())
                told->onFailure(path, reason.empty() ? "not a format that can be read" : reason);
            continue;
        }
        const vfFormats::ReadOutcome outcome = read(
            vfFormats::isModelFile(path) ? vfFormats::ReadKind::Model : vfFormats::ReadKind::Image, path);
        if (outcome.isCancelled)
            return {};
        if (!outcome.scene)
            continue;
        if (outcome.scene->getName().empty())
            outcome.scene->setName(osgDB::getSimpleFileName(path));
        models.push_back(outcome.scene);
    }
    return models;
}

vfBase::WriteResult ModelDocument::doSaveDocument(const vfBase::VfString& path,
                                                  const vfBase::Options& options)
{
    const std::string before = getFilename().str();
    Document::doSaveDocument(path, options);
    std::string reason = vfFormats::writeError(path.str());
    bool isCancelled = false;
    if (reason.empty()) {
        vfFormats::WriteJob job(scene(), path.str(), !m_animation.isEmpty());
        wait(job, true);
        reason = job.outcome().reason;
        isCancelled = job.isCancelled();
    }
    if (reason.empty()) {
        m_fileIdentity = vfBase::FileIdentity::of(path.str());
        for (const vfScene::CameraBookmark& place : path == before
                                                        ? std::vector<vfScene::CameraBookmark>()
                                                        : vfScene::CameraBookmarks::instance().of(before))
            vfScene::CameraBookmarks::instance().keep(path.str(), place);
        const std::string format = osgDB::getLowerCaseFileExtension(path);
        const std::string losses = vfFormats::describeLosses(scene(), format);
        if (FailureListener* told = losses.empty() ? nullptr : listener())
            told->onWarning(path, "." + format + " files do not keep: " + losses);
        return vfBase::WriteResult::Written;
    }
    if (FailureListener* told = isCancelled ? nullptr : listener())
        told->onFailure(path, reason);
    return vfBase::WriteResult(vfBase::WriteResult::WriteFailed, reason);
}

const vfBase::ClassInfo* ImageDocument::getClassInfo() const
{
    return &s_classInfo;
}

vfFormats::ReadKind ImageDocument::kind() const
{
    return vfFormats::ReadKind::Image;
}

} // namespace vfViewer
