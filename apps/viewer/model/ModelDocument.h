// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/FileIdentity.h>
#include <velaforge/documents/Recovery.h>

#include <velaforge/documents/Document.h>
#include <velaforge/formats/ReadJob.h>
#include <velaforge/scene/Measurement.h>
#include <velaforge/scene/ModelAnimation.h>
#include <velaforge/scene/ModelScene.h>

#include <osg/Matrixd>
#include <osg/Vec3d>
#include <osg/Vec4>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vfApplication {
class CommandPrivate;
}

namespace vfIsolation {
class Job;
}

namespace vfFormats {
struct ReadOutcome;
}

namespace vfViewer {

/// Who wants to know why a file could not be opened or saved: the document manager, if it is one.
class FailureListener
{
public:
    virtual ~FailureListener() = default;
    virtual void onFailure(const vfBase::VfString& path, const vfBase::VfString& reason) = 0;
    virtual void onWarning(const vfBase::VfString& path, const vfBase::VfString& warning) = 0;
    virtual void onDetail(const vfBase::VfString& path, const vfBase::VfString& detail) = 0;
};

/// Waits while a file is read or written, and does something better meanwhile: the document manager, if it is one.
class JobWaiter
{
public:
    virtual ~JobWaiter() = default;

    /// Returns when the job is done, or was cancelled here.
    /// @param isSaving  whether the file is written
    virtual void waitFor(vfIsolation::Job& job, bool isSaving) = 0;
};

/// Who has a clock: the document manager, if it is one.
class TimeKeeper
{
public:
    virtual ~TimeKeeper() = default;

    /// Something begins to move; it is to be told the time from here on.
    virtual void keepTime() = 0;
};

/// A 3D model.
class ModelDocument : public vfApplication::Document, public vfScene::ModelScene::Listener
{
public:
    static const vfBase::ClassInfo s_classInfo;

    ModelDocument();
    ~ModelDocument() override;

    const vfBase::ClassInfo* getClassInfo() const override;
    bool deleteContents() override;

    /// The commands before it are of a model that is gone, so they go too.
    bool revert() override;
    void concreteDocumentOperation() override {}

    /// @return the model, below a group that stays for the life of the document
    osg::Group& scene() const { return m_scene->root(); }

    // Changes that the history of the document can undo. Each returns false, and changes nothing, when the node does
    // not hang below scene().
    bool hide(osg::Node& node);
    bool show(osg::Node& node);
    bool remove(osg::Node& node);

    bool rename(osg::Node& node, const std::string& name);

    /// @param offset  in the coordinates of the node's parent
    bool move(osg::Node& node, const osg::Vec3d& offset);

    /// @param name    what the history calls it
    /// @param matrix  in the coordinates of the node's parent
    bool transform(osg::Node& node, const char* name, const osg::Matrixd& matrix);

    /// @param color  red, green, blue and alpha from 0 to 1, for everything below the node
    bool setColor(osg::Node& node, const osg::Vec4& color);

    /// @return the files that were read for the model beside its own: materials, textures
    const std::vector<std::string>& getOtherFiles() const { return m_otherFiles; }

    /// @return the file that the model was read from or saved to last, as it was then; of no file before
    const vfBase::FileIdentity& getFileIdentity() const { return m_fileIdentity; }

    /// For a model that was recovered: its changes are those of that file.
    void setFileIdentity(const vfBase::FileIdentity& identity) { m_fileIdentity = identity; }

    /// What of a model is looked at, by the places and names of its parts.
    struct Look
    {
        using Place = std::vector<std::pair<unsigned int, std::string>>;
        std::vector<Place> hidden;
        std::optional<Place> selected;
    };

    /// Hides and selects in the model that was read again what was hidden and selected before, as far as it is there. That
    /// is no change of the model.
    Look getLook() const;
    void restoreLook(const Look& look);

    /// Reads further files; those that cannot be read are told. Nothing of the document is changed.
    /// @return the models, in the order of the files
    std::vector<osg::ref_ptr<osg::Node>> readModels(const std::vector<vfBase::VfString>& paths) const;

    /// @return what commands work on: the part that is selected, the whole model while none is; null without a model
    osg::Node* target() const;

    /// @return the part that is selected, null while none is
    osg::Node* getSelection() const;

    /// Selects a node of the scene, and has all views drawn anew if another one was selected; null and a node that is not in it
    /// select nothing.
    void setSelection(osg::Node* node);

    // What was measured is no change of the model: it is neither in the history nor saved.
    const std::vector<vfScene::Measurement>& getMeasurements() const { return m_measurements; }
    void addMeasurement(const vfScene::Measurement& measurement);
    void clearMeasurements();

    // How a model moves by itself is no change of it either.
    vfScene::ModelAnimation& getAnimation() const { return m_animation; }

    /// Lets the animation go on with the time, or has it stand. @return false when nothing moves, or there is no clock
    bool play(bool isWanted);

    /// Has the animation stand where it is at that time, in seconds.
    void setAnimationTime(double seconds);

    /// What the numbers of this model mean; as the options say unless set.
    vfScene::Units getUnits() const;
    void setUnits(const vfScene::Units& units);

    void onSceneChanged(bool isPreview) override;

    /// Returns what crash recovery keeps of the document: its scene, as an .osgb file.
    vfApplication::Recovery::Snapshot recoverySnapshot() const;

    /// Takes over what was set for all documents.
    void takeSettings();

    /// @return the scene as the commands in the history share it
    vfScene::ModelScene& getModelScene() const { return *m_scene; }

    /// Reports to the user why something failed; does nothing without a reporter.
    void reportFailure(const vfBase::VfString& reason) const;

    /// @return "vfViewer::ModelDocument"
    static const char* classId();

protected:
    bool doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options) override;
    vfBase::WriteResult doSaveDocument(const vfBase::VfString& path, const vfBase::Options& options) override;

    virtual vfFormats::ReadKind kind() const;

private:
    ModelDocument(const ModelDocument&) = delete;
    ModelDocument& operator=(const ModelDocument&) = delete;

    FailureListener* listener() const;
    void wait(vfIsolation::Job& job, bool isSaving) const;
    vfFormats::ReadOutcome read(vfFormats::ReadKind readKind, const vfBase::VfString& path) const;
    bool submit(vfApplication::CommandPrivate* body);

    osg::ref_ptr<vfScene::ModelScene> m_scene;
    mutable vfScene::ModelAnimation m_animation; ///< which is nothing of the document that is saved
    osg::ref_ptr<osg::Node> m_selection;
    std::vector<vfScene::Measurement> m_measurements;
    std::vector<std::string> m_otherFiles;
    vfBase::FileIdentity m_fileIdentity;
    std::optional<vfScene::Units> m_units;
};

/// An image on an upright rectangle.
class ImageDocument : public ModelDocument
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;

protected:
    vfFormats::ReadKind kind() const override;
};

} // namespace vfViewer
