// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtDocManager.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/qt/PlainText.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/Reasons.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/qt/internal/UnsavedDialog.h>
#include <velaforge/shell/StatusBar.h>
#include <velaforge/toolkit/GuardedDocuments.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMainWindow>
#include <QMap>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>
#include <list>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace vfApplication {

struct QtDocManagerPrivate
{
    /// The document that is being closed.
    Document* asked = nullptr;

    /// The user has said already that the file is to be read again.
    bool isRevertAnswered = false;

    /// The manager is being destroyed: the documents close, whatever is answered.
    bool isEnding = false;

    /// The user has given up the work that is under way.
    bool isCancelled = false;

    /// The user wants the document that is being closed to be saved.
    bool isSaveChosen = false;

    unsigned int failures = 0;

    /// Documents whose changes the user does not want, while all are being closed.
    std::list<vfBase::LifeWatch<Document>> discarded;
};

namespace {

QWidget* window()
{
    QtApplication* shell = QtApplication::instance();
    return shell ? &shell->getMainWindow() : nullptr;
}

QStringList patterns(const QString& filter)
{
    QStringList all;
    for (const QString& extension : filter.split(QLatin1Char(','), Qt::SkipEmptyParts))
        all << (extension == QLatin1String("*") ? extension : QLatin1String("*.") + extension.trimmed());
    return all;
}

/// @return the filters of a file dialog, one for each kind
QStringList nameFilters(DocTemplate* const* templates, int count)
{
    QStringList filters;
    for (int i = 0; i < count; ++i)
        filters << QStringLiteral("%1 (%2)").arg(
            toQt(templates[i]->getDescription()),
            patterns(toQt(templates[i]->getFileFilter())).join(QLatin1Char(' ')));
    return filters;
}

/// @return how many of the kinds differ in the names by which the manager tells them apart
int countKinds(const vfBase::Vector<DocTemplate*>& templates)
{
    std::set<std::pair<std::string, std::string>> kinds;
    for (const DocTemplate* one : templates)
        kinds.emplace(one->getDocumentName().str(), one->getViewName().str());
    return static_cast<int>(kinds.size());
}

/// The document's name, for questions.
QString nameOf(const Document* document)
{
    return document ? toQt(document->getUserReadableName()) : QString();
}

/// Calls reportFailure(), and shows what that throws.
void tell(QtDocManager& manager, const vfBase::VfString& path, const QString& reason)
{
    try {
        manager.reportFailure(path, fromQt(reason));
    } catch (...) {
        manager.QtDocManager::reportFailure(path, fromQt(reason));
        manager.QtDocManager::reportFailure(path, fromQt(currentReason()));
    }
}

} // namespace

/// Shows that work is going on, from its construction to its destruction. Tells what the program throws meanwhile.
class QtDocManager::Work
{
public:
    Work(QtDocManager& manager, const vfBase::VfString& path) : m_manager(manager), m_path(path)
    {
        guard([&] { manager.beginWork(path); });
    }
    ~Work()
    {
        guard([this] { m_manager.endWork(); });
    }

    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

private:
    template <class Function>
    void guard(Function function)
    {
        try {
            function();
        } catch (...) {
            tell(m_manager, m_path, currentReason());
        }
    }

    QtDocManager& m_manager;
    const vfBase::VfString m_path;
};

QtDocManager::QtDocManager() : d(std::make_unique<QtDocManagerPrivate>()) {}

QtDocManager::~QtDocManager()
{
    d->isEnding = true;
    while (getNumDocuments() > 0) {
        d->asked = getDocumentList()[0];
        const vfBase::VfString name = d->asked->getUserReadableName();
        std::string problem;
        closeGuarded(*this, *d->asked, true, problem);
        if (!problem.empty())
            QtDocManager::reportFailure(name, fromQt(translatedReason(problem)));
    }
}

void QtDocManager::beginWork(const vfBase::VfString& path)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const QString name = QFileInfo(toQt(path)).fileName();
    if (QtApplication* shell = QtApplication::instance(); shell && !name.isEmpty())
        shell->showActivity(fromQt(tr("Opening %1…").arg(name)));
}

void QtDocManager::endWork()
{
    QGuiApplication::restoreOverrideCursor();
    if (QtApplication* shell = QtApplication::instance())
        shell->showActivity(vfBase::VfString());
}

Document* QtDocManager::createDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    const unsigned int failuresBefore = d->failures;
    const bool isNew = options.isValid() && options.getPluginStringData("NEWDOC") == "TRUE";
    const vfBase::VfString absolute = vfBase::absolutePath(path);
    Document* document = nullptr;
    d->isCancelled = false;
    std::optional<Work> work;
    if (window())
        work.emplace(*this, absolute);
    std::string reason = runReading(
        [&] { return (document = DocManager::createDocument(absolute, options)) != nullptr; }, std::string());
    const vfBase::LifeWatch<Document> watch(document);
    work.reset();
    if (document)
        return watch.get();
    // Who is asked for a kind of document may give up.
    const bool isCancelled = d->isCancelled || (isNew && reason.empty());
    if (!isCancelled && reason.empty())
        reason = reasonNotReadable(*this, absolute, options);
    if (!isCancelled && d->failures == failuresBefore)
        tell(*this, path, reason.empty() ? tr("The file could not be opened.") : translatedReason(reason));
    return nullptr;
}

bool QtDocManager::updateDocument(Document* document, const vfBase::VfString& path,
                                  const vfBase::Options& options)
{
    if (!document)
        return false;
    const unsigned int failuresBefore = d->failures;
    const vfBase::VfString absolute = vfBase::absolutePath(path);
    const vfBase::VfString before = document->getFilename();
    const vfBase::LifeWatch<Document> watch(document);
    d->isCancelled = false;
    bool isDone = false;
    std::string reason = runReading(
        [&] { return isDone = DocManager::updateDocument(document, absolute, options); }, std::string());
    if (isDone)
        return true;
    if (!watch.isGone() && document->getFilename() != before)
        document->setFilename(before, false); // the base class does so unless an exception passes through it
    if (reason.empty())
        reason = reasonNotReadable(*this, absolute, options);
    if (!d->isCancelled && d->failures == failuresBefore)
        tell(*this, path, reason.empty() ? tr("The file could not be opened.") : translatedReason(reason));
    return false;
}

void QtDocManager::activateView(View* view, bool active)
{
    DocManager::activateView(view, active);
    if (QtApplication* shell = active ? nullptr : QtApplication::instance())
        shell->getImp().activateFront();
}

void QtDocManager::noteCancelled()
{
    d->isCancelled = true;
}

unsigned int QtDocManager::getFailureCount() const
{
    return d->failures;
}

void QtDocManager::reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    ++d->failures;
    if (QtApplication* shell = QtApplication::instance())
        shell->showProblem(path, reason);
}

std::vector<vfBase::VfString> QtDocManager::selectFilesToOpen()
{
    vfBase::Vector<DocTemplate*> visible;
    getVisibleTemplates(visible);
    const std::vector<DocTemplate*> kinds(visible.begin(), visible.end());
    QStringList filters = nameFilters(kinds.data(), int(kinds.size()));
    if (kinds.size() > 1) {
        QStringList all;
        for (const DocTemplate* kind : kinds)
            all << patterns(toQt(kind->getFileFilter()));
        all.removeDuplicates();
        filters.prepend(
            QStringLiteral("%1 (%2)").arg(tr("All that can be opened"), all.join(QLatin1Char(' '))));
    }
    filters << tr("All files (*)");
    const QStringList chosen = QFileDialog::getOpenFileNames(window(), tr("Open"), toQt(getLastDirectory()),
                                                             filters.join(QLatin1String(";;")));
    std::vector<vfBase::VfString> paths;
    for (const QString& path : chosen)
        paths.push_back(vfBase::absolutePath(fromQt(path)));
    if (!paths.empty())
        setLastDirectory(fromQt(QFileInfo(chosen.first()).absolutePath()));
    return paths;
}

DocTemplate* QtDocManager::selectDocumentPath(DocTemplate** templates, int count, vfBase::VfString& path,
                                              bool isSaving)
{
    const QString filters = nameFilters(templates, count).join(QLatin1String(";;"));
    const QString start = path.empty() ? toQt(getLastDirectory()) : toQt(path);
    const QString chosen = isSaving ? QFileDialog::getSaveFileName(window(), tr("Save"), start, filters)
                                    : QFileDialog::getOpenFileName(window(), tr("Open"), start, filters);
    if (chosen.isEmpty())
        return nullptr;
    path = vfBase::absolutePath(fromQt(chosen));
    setLastDirectory(fromQt(QFileInfo(chosen).absolutePath()));
    for (int i = 0; i < count; ++i) {
        if (templates[i]->fileMatchesTemplate(path))
            return templates[i];
    }
    return nullptr;
}

DocTemplate* QtDocManager::selectDocumentTypeUser(DocTemplate** templates, int count)
{
    if (!window())
        return DocManager::selectDocumentTypeUser(templates, count);
    // Only as many entries are valid as kinds differ; the number says how many there were before.
    vfBase::Vector<DocTemplate*> visible;
    getVisibleTemplates(visible);
    QStringList names;
    const int differing = std::min(count, countKinds(visible));
    for (int i = 0; i < differing; ++i) {
        const QString name = toQt(templates[i]->getDescription());
        names << (names.contains(name) ? QStringLiteral("%1 (%2)").arg(name).arg(i + 1) : name);
    }
    bool isChosen = false;
    const QString chosen = QInputDialog::getItem(window(), tr("New document"), tr("Kind of document:"), names,
                                                 0, false, &isChosen);
    return isChosen ? templates[names.indexOf(chosen)] : nullptr;
}

int QtDocManager::askForUserConfirmation()
{
    QWidget* parent = window();
    Document* document = d->asked;
    if (!parent || isDiscarded(document))
        return 2;
    // The caller that closes a document does not name it: it is the only one with changes, or else the active one.
    if (!document || !containsDocument(document)) {
        document = getCurrentDocument();
        for (Document* open : getDocumentList()) {
            if (open->isModified() && (!document || !document->isModified()))
                document = open;
        }
    }
    QMessageBox box(QMessageBox::Warning, tr("Unsaved changes"),
                    tr("“%1” has changes that are not saved.").arg(nameOf(document)),
                    QMessageBox::Save | QMessageBox::Discard, parent);
    box.setObjectName(QStringLiteral("saveQuestion"));
    box.setInformativeText(tr("What is not saved is lost when the document is closed."));
    box.setDefaultButton(QMessageBox::Save);
    if (!d->isEnding) {
        box.addButton(QMessageBox::Cancel);
        box.setEscapeButton(QMessageBox::Cancel);
    }
    usePlainText(box);
    switch (box.exec()) {
    case QMessageBox::Save:
        d->isSaveChosen = true;
        return 1;
    case QMessageBox::Discard:
        return 2;
    default:
        d->isCancelled = true;
        return 0;
    }
}

int QtDocManager::askForConfirmRevert()
{
    QWidget* parent = window();
    if (d->isRevertAnswered || !parent)
        return 1;
    QMessageBox box(QMessageBox::Question, tr("Revert"),
                    tr("Read “%1” again from its file?").arg(nameOf(getCurrentDocument())),
                    QMessageBox::Cancel, parent);
    box.setObjectName(QStringLiteral("revertQuestion"));
    box.setInformativeText(tr("All changes since it was saved are lost."));
    usePlainText(box);
    const QAbstractButton* revert = box.addButton(tr("Revert"), QMessageBox::DestructiveRole);
    box.exec();
    d->isCancelled = box.clickedButton() != revert;
    return d->isCancelled ? 0 : 1;
}

vfBase::VfString QtDocManager::describeFormat(const vfBase::VfString& extension)
{
    vfBase::Vector<DocTemplate*> visible;
    getVisibleTemplates(visible);
    for (const DocTemplate* one : visible) {
        const QStringList formats = toQt(one->getFileFilter()).split(QLatin1Char(','), Qt::SkipEmptyParts);
        if (!one->getDescription().empty() && formats.size() == 1 &&
            formats.front().trimmed() == toQt(extension))
            return one->getDescription();
    }
    return fromQt(tr("%1 file").arg(toQt(extension).toUpper()));
}

vfBase::VfString QtDocManager::selectDocumentSavePath(const char* directory, const char* name,
                                                      const char* extension, const char* filter,
                                                      vfBase::Options&)
{
    QWidget* parent = window();
    if (!parent)
        return vfBase::VfString();
    const QString suffix = QString::fromUtf8(extension);
    QFileDialog dialog(parent, tr("Save as"), QString::fromUtf8(directory));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(suffix);
    QMap<QString, QString> suffixes;
    QStringList filters;
    for (const QString& format : QString::fromUtf8(filter).split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString written = format.trimmed();
        const QString line =
            written == QLatin1String("*")
                ? tr("All files (*)")
                : QStringLiteral("%1 (*.%2)").arg(toQt(describeFormat(fromQt(written))), written);
        if (written == suffix)
            filters.prepend(line);
        else
            filters << line;
        suffixes.insert(line, written);
    }
    dialog.setNameFilters(filters);
    // The extension that is shown is the one that is written.
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                     [&dialog, suffixes](const QString& chosen) {
                         const QString written = suffixes.value(chosen);
                         if (!written.isEmpty() && written != QLatin1String("*"))
                             dialog.setDefaultSuffix(written);
                     });
    dialog.selectFile(QString::fromUtf8(name));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        d->isCancelled = true;
        return vfBase::VfString();
    }
    const QString path = dialog.selectedFiles().constFirst();
    setLastDirectory(fromQt(QFileInfo(path).absolutePath()));
    return vfBase::absolutePath(fromQt(path));
}

bool QtDocManager::closeWithQuestion(Document& document)
{
    const unsigned int failuresBefore = d->failures;
    const vfBase::VfString name = document.getUserReadableName();
    d->isCancelled = false;
    d->isSaveChosen = false;
    const auto before = std::exchange(d->asked, &document);
    const vfBase::LifeWatch<Document> watch(&document);
    std::string problem;
    std::string problemOfActivation;
    try {
        document.activate();
    } catch (...) {
        problemOfActivation = vfBase::BaseException::describeCurrent();
    }
    const bool isClosed = watch.isGone() || closeGuarded(*this, document, false, problem);
    if (problem.empty())
        problem = problemOfActivation;
    d->asked = before;
    const bool isSaveMissed = !isClosed && d->isSaveChosen && !d->isCancelled;
    if (!problem.empty())
        tell(*this, name, translatedReason(problem));
    else if (isSaveMissed && d->failures == failuresBefore)
        tell(*this, name, tr("The document could not be saved."));
    return isClosed;
}

bool QtDocManager::askForChangesOfAll()
{
    // Any document may go while the user is asked or another one is saved.
    std::list<vfBase::LifeWatch<Document>> modified;
    for (const Document* document : getDocumentList()) {
        if (document->isModified())
            modified.emplace(document == getCurrentDocument() ? modified.begin() : modified.end(), document);
    }
    if (modified.size() < 2 || !window())
        return true; // the question about one asks in its turn, before anything is closed
    QStringList names;
    for (const auto& document : modified)
        names << nameOf(document.get());
    UnsavedDialog dialog(window(), names);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    int number = 0;
    for (auto next = modified.begin(); next != modified.end(); ++number) {
        const auto asked = next++;
        Document* document = asked->get();
        if (!document || !containsDocument(document))
            continue;
        if (!dialog.isSaveWanted(number))
            d->discarded.splice(d->discarded.end(), modified, asked);
        else if (document->isModified() && !save(*document))
            return false;
    }
    return true;
}

bool QtDocManager::isDiscarded(const Document* document) const
{
    return std::any_of(
        d->discarded.begin(), d->discarded.end(),
        [document](const vfBase::LifeWatch<Document>& one) { return document && one.get() == document; });
}

bool QtDocManager::closeAllWithQuestions()
{
    const auto forget = qScopeGuard([this] { d->discarded.clear(); });
    bool isDone = askForChangesOfAll();
    while (isDone && getNumDocuments() > 0) {
        // One with changes is asked about before any is closed; a view that is being deleted is the current one until its
        // end, when its document is closed already.
        Document* next = getCurrentDocument();
        if (!containsDocument(next))
            next = getDocumentList()[0];
        for (Document* document : getDocumentList()) {
            if (document->isModified() && !next->isModified() && !isDiscarded(document))
                next = document;
        }
        isDone = closeWithQuestion(*next);
    }
    return isDone;
}

bool QtDocManager::save(Document& document, const vfBase::VfString& path)
{
    return saveGuarded(document, [&] {
        return path.empty() ? document.save()
                            : document.onSaveDocument(vfBase::absolutePath(path), vfBase::Options::invalid());
    });
}

bool QtDocManager::saveAs(Document& document)
{
    return saveGuarded(document, [&document] { return document.saveAs(); });
}

bool QtDocManager::saveGuarded(Document& document, const std::function<vfBase::WriteResult()>& write)
{
    const unsigned int failuresBefore = d->failures;
    const vfBase::VfString name =
        document.alreadySaved() ? document.getFilename() : document.getUserReadableName();
    QString reason;
    d->isCancelled = false;
    try {
        const vfBase::WriteResult result = write();
        if (result.success())
            return true;
        if (result.getStatus() == vfBase::WriteResult::NoPath)
            return false; // the user gave up
        reason = translatedReason(result.getMessage().str());
    } catch (...) {
        reason = currentReason();
    }
    if (d->failures == failuresBefore)
        tell(*this, name, reason.isEmpty() ? tr("The document could not be saved.") : reason);
    return false;
}

bool QtDocManager::reload(Document& document)
{
    const vfBase::LifeWatch<Document> watch(&document);
    const Work work(*this, document.getFilename());
    const QScopedValueRollback<bool> answered(d->isRevertAnswered, true);
    return !watch.isGone() && revertWithQuestion(document);
}

bool QtDocManager::revertWithQuestion(Document& document)
{
    const unsigned int failuresBefore = d->failures;
    const vfBase::VfString path = document.getFilename();
    bool isDone = false;
    d->isCancelled = false;
    const std::string reason = runReading([&] { return isDone = document.revert(); }, std::string());
    if (!isDone && !d->isCancelled && d->failures == failuresBefore)
        tell(*this, path,
             reason.empty() ? tr("The file could not be read again. The document is as it was.")
                            : translatedReason(reason));
    return isDone;
}

} // namespace vfApplication
