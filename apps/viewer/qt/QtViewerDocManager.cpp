// SPDX-License-Identifier: MIT
#include "qt/QtViewerDocManager.h"

#include "model/ModelView.h"
#include "model/NamedCommands.h"
#include "qt/LoadDialog.h"
#include "qt/QtModelView.h"
#include "qt/StatusSummary.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/documents/Session.h>
#include <velaforge/documents/View.h>
#include <velaforge/formats/FormatList.h>
#include <velaforge/formats/FormatLosses.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/ReadJob.h>
#include <velaforge/qt/PlainText.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/scene/StoredStyles.h>

#include <osgDB/FileNameUtils>

#include <QDateTime>
#include <QLocale>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace vfViewer {

namespace {

constexpr int keepingInterval = 2000; // milliseconds
constexpr int clockInterval = 16;
constexpr int beginningInterval = 50;

} // namespace

QtViewerDocManager::QtViewerDocManager()
    : m_timer(std::make_unique<QTimer>()), m_clock(std::make_unique<QTimer>())
{
    addViewerKinds(*this, QtModelView::s_classInfo);
    QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] { keepUnsaved(); });
    QObject::connect(m_clock.get(), &QTimer::timeout, m_clock.get(), [this] { passTime(); });
    m_clock->setTimerType(Qt::PreciseTimer);
    // The manager is there before the window is, and before there are timers.
    QMetaObject::invokeMethod(
        m_timer.get(), [this] { begin(); }, Qt::QueuedConnection);
}

QtViewerDocManager::~QtViewerDocManager() = default;

void QtViewerDocManager::begin()
{
    if (!m_summary && vfApplication::QtApplication::instance())
        m_summary = std::make_unique<StatusSummary>();
    // The files that were named come first; while they are read there is no window yet that could ask.
    if (m_isReading) {
        QTimer::singleShot(beginningInterval, m_timer.get(), [this] { begin(); });
        return;
    }
    m_recovery =
        std::make_unique<vfApplication::Recovery>(vfApplication::Recovery::standardDirectory(), ".osgb");
    m_timer->start(keepingInterval);
    offerLeftBehind();
    openSession();
}

void QtViewerDocManager::addFileToHistory(const vfBase::VfString& path)
{
    if (osgDB::getFilePath(path) != vfApplication::Recovery::standardDirectory())
        QtDocManager::addFileToHistory(path);
}

void QtViewerDocManager::keepUnsaved()
{
    if (m_recovery->isWriting())
        return; // the window waits for no disk
    const auto& documents = getDocumentList();
    for (const vfApplication::Document* kept : m_recovery->getKept()) {
        if (std::find(documents.begin(), documents.end(), kept) == documents.end() || !kept->isModified())
            m_recovery->drop(kept);
    }
    for (const vfApplication::Document* document : documents) {
        const auto* model = dynamic_cast<const ModelDocument*>(document);
        if (model && model->isModified())
            m_recovery->keep(*model, model->recoverySnapshot());
    }
}

bool QtViewerDocManager::closeAllWithQuestions()
{
    std::vector<vfApplication::Session::Entry> entries;
    for (const vfApplication::Document* document : getDocumentList()) {
        const auto* view = dynamic_cast<const ModelView*>(document->getFirstView());
        if (view && document->alreadySaved())
            entries.push_back({vfBase::absolutePath(document->getFilename()).str(),
                               vfBase::SettingsValue::Map{{"camera", vfScene::stored(view->getCamera())},
                                                          {"style", vfScene::stored(view->getStyle())}}});
    }
    if (!QtDocManager::closeAllWithQuestions())
        return false;
    vfApplication::Session::instance().setEntries(entries);
    return true;
}

void QtViewerDocManager::openSession()
{
    const auto& session = vfApplication::Session::instance();
    if (!session.isRestored() || !getDocumentList().isEmpty())
        return;
    for (const auto& entry : std::vector<vfApplication::Session::Entry>(session.getEntries())) {
        const vfApplication::Document* document =
            vfApplication::Application::instance(false)->openDocument(entry.path.c_str(), vfBase::Options());
        auto* view = document ? dynamic_cast<ModelView*>(document->getFirstView()) : nullptr;
        const vfBase::SettingsValue::Map* state = entry.view.map();
        if (!view || !state)
            continue;
        vfScene::ViewStyle style = view->getStyle();
        if (vfScene::readStored(vfScene::storedPart(*state, "style"), style))
            view->setStyle(style);
        vfScene::LookAt camera;
        if (vfScene::readStored(vfScene::storedPart(*state, "camera"), camera))
            view->setCamera(camera);
    }
}

void QtViewerDocManager::offerLeftBehind()
{
    auto* shell = vfApplication::QtApplication::instance();
    const std::vector<vfApplication::Recovery::Found> found = m_recovery->findLeftBehind();
    if (found.empty() || !shell)
        return;
    QStringList names;
    for (const vfApplication::Recovery::Found& one : found) {
        const QString line = one.isOriginalChanged()
                                 ? tr("%1, changed on %2; another program has changed its file since")
                                 : tr("%1, changed on %2");
        names << line.arg(QString::fromStdString(osgDB::getSimpleFileName(one.original)),
                          QLocale().toString(QDateTime::fromSecsSinceEpoch(one.time), QLocale::ShortFormat));
    }
    QMessageBox box(QMessageBox::Question, tr("Recover"),
                    tr("The program ended before these models were saved:"), QMessageBox::NoButton,
                    &shell->getMainWindow());
    box.setObjectName(QStringLiteral("recoverQuestion"));
    box.setInformativeText(names.join(QLatin1Char('\n')));
    vfApplication::usePlainText(box);
    QPushButton* wanted = box.addButton(tr("&Recover"), QMessageBox::AcceptRole);
    const QPushButton* discarded = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
    box.setEscapeButton(box.addButton(tr("&Later"), QMessageBox::RejectRole));
    box.setDefaultButton(wanted);
    box.exec();
    for (const vfApplication::Recovery::Found& one : found) {
        if (box.clickedButton() == wanted)
            recover(one);
        else if (box.clickedButton() == discarded)
            vfApplication::Recovery::discard(one);
    }
}

void QtViewerDocManager::recover(const vfApplication::Recovery::Found& found)
{
    vfApplication::Document* document =
        vfApplication::Application::instance(false)->openDocument(found.copy.c_str(), vfBase::Options());
    auto* model = dynamic_cast<ModelDocument*>(document);
    auto* shell = vfApplication::QtApplication::instance();
    if (!model || !shell)
        return;
    // Who named the file at the start wants what became of it, not both.
    vfApplication::Document* before = findDocumentByPath(found.original.c_str());
    if (before && !before->isModified())
        closeDocument(before, false);
    // It is that of the file again, with changes; the file itself is as it was.
    shell->removeFileFromFileSystemWatcher(found.copy);
    model->setTitle(osgDB::getSimpleFileName(found.original));
    model->setFilename(found.original, true);
    model->setFileIdentity(found.identity);
    // Saving asks for a file when there was none, and when another program has written it since.
    model->setDocumentSaved(found.hasFile() && !found.isOriginalChanged());
    model->modify(true);
    if (model->alreadySaved())
        shell->addFileToFileSystemWatcher(found.original);
    if (m_recovery->keepNow(*model, model->recoverySnapshot()))
        vfApplication::Recovery::discard(found);
}

vfApplication::Document* QtViewerDocManager::createDocument(const vfBase::VfString& path,
                                                            const vfBase::Options& options)
{
    const bool isNew = options.isValid() && options.getPluginStringData("NEWDOC") == "TRUE";
    const std::string reason = isNew ? "" : whyNotTried(*this, path);
    if (!reason.empty()) {
        onFailure(path, reason);
        return nullptr;
    }
    beginFile(path);
    const bool isOpen =
        findDocumentByPath(vfBase::absolutePath(path).c_str()) != nullptr; // and is not read again
    vfApplication::Document* document = QtDocManager::createDocument(path, options);
    if (!isOpen)
        watchFilesOf(document);
    return document;
}

bool QtViewerDocManager::reload(vfApplication::Document& document)
{
    auto* model = dynamic_cast<ModelDocument*>(&document);
    const ModelDocument::Look look = model ? model->getLook() : ModelDocument::Look();
    const bool isDone = QtDocManager::reload(document);
    if (isDone && model)
        model->restoreLook(look);
    watchFilesOf(&document);
    return isDone;
}

void QtViewerDocManager::watchFilesOf(vfApplication::Document* document)
{
    const auto* model = dynamic_cast<ModelDocument*>(document);
    if (!model || !vfApplication::QtApplication::instance())
        return;
    const std::vector<vfBase::VfString> files(model->getOtherFiles().begin(), model->getOtherFiles().end());
    vfApplication::QtApplication::instance()->setOtherFiles(*document, files);
}

vfBase::VfString QtViewerDocManager::describeFormat(const vfBase::VfString& extension)
{
    return QCoreApplication::translate("vfViewer", vfFormats::formatName(extension.str()).c_str())
        .toStdString();
}

vfBase::VfString QtViewerDocManager::selectDocumentSavePath(const char* directory, const char* name,
                                                            const char* extension, const char*,
                                                            vfBase::Options& options)
{
    // A model goes back where it came from, as what it was, where that can be written.
    std::string folder = directory;
    std::string format = extension;
    if (const ModelDocument* document = activeModel(); document && document->alreadySaved()) {
        const std::string own = osgDB::getLowerCaseFileExtension(document->getFilename());
        if (vfFormats::writeError("model." + own).empty())
            format = own;
        folder = osgDB::getFilePath(vfBase::absolutePath(document->getFilename()).str());
    }
    const vfBase::VfString path = QtDocManager::selectDocumentSavePath(
        folder.c_str(), name, format.c_str(), vfFormats::writableFormats().c_str(), options);
    return path.empty() || isWantedIn(path) ? path : vfBase::VfString();
}

/// Asks when the format of a file does not keep all of the model. @return false when it is not to be written then
bool QtViewerDocManager::isWantedIn(const vfBase::VfString& path)
{
    const ModelDocument* document = activeModel();
    const std::string format = osgDB::getLowerCaseFileExtension(path);
    auto* shell = vfApplication::QtApplication::instance();
    const std::vector<std::string> losses =
        document ? vfFormats::lossesOf(document->scene(), format) : std::vector<std::string>();
    if (losses.empty() || !shell)
        return true;
    QStringList words;
    for (const std::string& loss : losses)
        words << QCoreApplication::translate("vfViewer", loss.c_str());
    QMessageBox box(QMessageBox::Warning, tr("Not all is kept"),
                    tr("Files of the format “.%1” do not keep: %2.")
                        .arg(QString::fromStdString(format), words.join(QStringLiteral(", "))),
                    QMessageBox::NoButton, &shell->getMainWindow());
    box.setObjectName(QStringLiteral("lossQuestion"));
    box.setInformativeText(tr("The open model keeps it until it is closed."));
    vfApplication::usePlainText(box);
    QPushButton* save = box.addButton(tr("&Save all the same"), QMessageBox::AcceptRole);
    box.setEscapeButton(box.addButton(QMessageBox::Cancel));
    box.setDefaultButton(save);
    box.exec();
    return box.clickedButton() == save;
}

void QtViewerDocManager::waitFor(vfIsolation::Job& job, bool isSaving)
{
    if (!vfApplication::QtApplication::instance())
        return;
    const bool wasReading = std::exchange(m_isReading, true);
    LoadDialog::waitFor(job, isSaving, &vfApplication::QtApplication::instance()->getMainWindow());
    m_isReading = wasReading;
    if (job.isCancelled() && !isSaving)
        noteCancelled();
}

void QtViewerDocManager::keepTime()
{
    if (m_clock->isActive())
        return;
    m_sinceTick.start();
    m_clock->start(clockInterval);
}

void QtViewerDocManager::passTime()
{
    const double passed = double(m_sinceTick.nsecsElapsed()) * 1e-9;
    m_sinceTick.start();
    bool isPlaying = false;
    for (vfApplication::Document* document : getDocumentList()) {
        auto* model = dynamic_cast<ModelDocument*>(document);
        if (!model || !model->getAnimation().isPlaying())
            continue;
        isPlaying = true;
        model->setAnimationTime(model->getAnimation().getTime() + passed);
    }
    if (!isPlaying)
        m_clock->stop();
}

void QtViewerDocManager::onFailure(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    FailureLog::onFailure(path, reason);
    QtDocManager::reportFailure(path, reason);
}

void QtViewerDocManager::reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    onFailure(path, reason);
}

} // namespace vfViewer
