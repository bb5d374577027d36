// SPDX-License-Identifier: MIT
#include <velaforge/base/Settings.h>

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/InternedText.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Printable.h>
#include <velaforge/base/SettingsDocument.h>
#include <velaforge/base/SettingsFile.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>
#include <velaforge/base/StandardPaths.h>

#include <osg/Notify>

#include <algorithm>
#include <optional>
#include <vector>

namespace vfBase {

namespace {

void tell(const std::string& message)
{
    if (NotifyHandler::instance().isNotifyEnabled())
        osg::notify(osg::WARN) << message << std::endl;
}

std::string entryName(const SettingsObjectPrivate& object)
{
    return std::string(object.libraryName()) + "::" + object.tagName();
}

std::string globalPath()
{
    std::string path = StandardPaths::standardLocation(StandardPaths::GenericConfig);
    const ApplicationInfo& info = ApplicationInfo::instance();
    const VfString vendor = makePathComponent(info.getApplicationVendorShortName());
    const VfString name = makePathComponent(info.getApplicationName());
    if (!vendor.empty())
        path += "/" + vendor.str();
    return path + "/" + (name.empty() ? "application" : name.str()) + ".json";
}

} // namespace

class SettingsPrivate : public osg::Referenced
{
public:
    explicit SettingsPrivate(const std::optional<VfString>& ownPath) : m_ownPath(ownPath) {}

    void add(const SettingsObject& object);
    bool load();
    bool saveOwn();
    bool saveTo(const std::string& otherPath);
    VfString path() const;

private:
    /// What stands on the disk, after what is damaged was told and replaced by the generation before.
    struct Disk
    {
        std::optional<SettingsDocument> document;
        /// False for a file that must be neither read nor replaced.
        bool isUsable = true;
        /// The file itself is damaged, and document is the generation before, if there is one.
        bool isDamaged = false;
        std::string reason;
    };

    static Disk readDisk(const SettingsFile& file);
    static bool setAsideDamaged(const SettingsFile& file, const Disk& disk, std::string& reason);

    void applyTo(SettingsObjectPrivate& object);
    SettingsDocument ours() const;
    bool saveLocked(const SettingsFile& file, std::string& reason);

    /// None for the global store, whose path depends on the application's name.
    std::optional<VfString> m_ownPath;
    std::vector<SettingsObject> m_objects;

    /// What this program has read from or written to the file last: a save writes only what has changed
    /// against it.
    std::optional<SettingsDocument> m_base;
    std::string m_basePath;
    bool m_keepCopy = false; ///< the file holds values that we could not take
};

VfString SettingsPrivate::path() const
{
    return m_ownPath ? *m_ownPath : VfString(globalPath());
}

void SettingsPrivate::add(const SettingsObject& object)
{
    SettingsObjectPrivate& added = *object.getImp();
    const auto sameEntry = [name = entryName(added)](const SettingsObject& other) {
        return entryName(*other.getImp()) == name;
    };
    m_objects.erase(std::remove_if(m_objects.begin(), m_objects.end(), sameEntry), m_objects.end());
    m_objects.push_back(object);
    // A plug-in that comes after the load must not save its defaults over the user's values.
    if (m_base)
        applyTo(added);
}

void SettingsPrivate::applyTo(SettingsObjectPrivate& object)
{
    const SettingsProperties* list = SettingsProperties::find(object);
    const std::string entry = entryName(object);
    if (!list || !m_base->has(entry))
        return;
    if (!m_base->isEntry(entry)) {
        tell("Settings in " + printable(m_basePath).str() + ": \"" + entry +
             "\" is not an object; defaults are used");
        m_keepCopy = true;
        return;
    }
    for (const SettingsProperties::Property& property : list->properties()) {
        const std::optional<SettingsValue> value = m_base->value(entry, property.name);
        if (value && !property.set(object, *value)) {
            tell("Settings in " + printable(m_basePath).str() + ": \"" + property.name + "\" of \"" + entry +
                 "\" has an invalid value; the default is used");
            m_keepCopy = true;
        }
    }
}

SettingsPrivate::Disk SettingsPrivate::readDisk(const SettingsFile& file)
{
    Disk disk;
    const SettingsFile::Contents contents = file.read();
    if (contents.state == SettingsFile::State::Absent)
        return disk;
    if (contents.state == SettingsFile::State::Refused) {
        disk.isUsable = false;
        disk.reason = contents.reason;
        return disk;
    }
    disk.reason = contents.reason;
    if (contents.state == SettingsFile::State::Read)
        disk.document = SettingsDocument::parse(contents.text, disk.reason);
    if (!disk.document) {
        disk.isDamaged = true;
        const SettingsFile::Contents previous = file.readPrevious();
        std::string ignored;
        if (previous.state == SettingsFile::State::Read)
            disk.document = SettingsDocument::parse(previous.text, ignored);
    }
    if (disk.document && !disk.document->isOfKnownFormat()) {
        disk.isUsable = false;
        disk.reason = "they were written by a newer version";
    }
    return disk;
}

bool SettingsPrivate::setAsideDamaged(const SettingsFile& file, const Disk& disk, std::string& reason)
{
    const std::string copy = file.keepCopy("damaged", reason);
    if (copy.empty())
        return false;
    tell("Settings in " + printable(file.path()).str() + " are damaged (" + disk.reason +
         "); the damaged file is kept as " + printable(copy).str() +
         (disk.document ? "; the previous settings are used" : "; defaults are used"));
    return true;
}

bool SettingsPrivate::load()
{
    const SettingsFile file(path().str());
    file.removeAbandonedDrafts();
    Disk disk = readDisk(file);
    if (disk.isDamaged || file.hasLeftovers()) {
        const SettingsFile::Lock lock(file);
        if (lock.isHeld()) {
            file.clearLeftovers();
            disk = readDisk(file); // another program may have put it right
        }
        std::string reason = lock.reason();
        if (disk.isDamaged && !(lock.isHeld() && setAsideDamaged(file, disk, reason) &&
                                file.restorePrevious(disk.document.has_value(), reason)))
            tell("Settings in " + printable(file.path()).str() + " are damaged (" + disk.reason +
                 ") and could not be repaired: " + reason);
    }
    m_base.reset();
    m_basePath = file.path();
    m_keepCopy = false;
    if (!disk.isUsable)
        tell("Settings in " + printable(file.path()).str() + " are not read: " + disk.reason);
    if (!disk.isUsable || !disk.document) {
        m_base = ours(); // what is not changed from here on must not win over a file that turns up later
        return false;
    }
    m_base = std::move(disk.document);
    for (const SettingsObject& object : std::vector<SettingsObject>(m_objects))
        applyTo(*object.getImp());
    return true;
}

SettingsDocument SettingsPrivate::ours() const
{
    SettingsDocument document = m_base ? *m_base : SettingsDocument();
    for (const SettingsObject& object : m_objects) {
        if (const SettingsProperties* list = SettingsProperties::find(*object.getImp())) {
            const std::string entry = entryName(*object.getImp());
            for (const SettingsProperties::Property& property : list->properties())
                document.setValue(entry, property.name, property.get(*object.getImp()));
        }
    }
    return document;
}

bool SettingsPrivate::saveOwn()
{
    const SettingsFile file(path().str());
    std::string reason;
    bool saved = false;
    if (file.makeDirectories(reason)) {
        const SettingsFile::Lock lock(file);
        if (lock.isHeld())
            saved = saveLocked(file, reason);
        else
            reason = lock.reason();
    }
    if (!saved)
        tell("Settings were not saved to " + printable(file.path()).str() + ": " + reason);
    return saved;
}

bool SettingsPrivate::saveLocked(const SettingsFile& file, std::string& reason)
{
    file.clearLeftovers();
    const Disk disk = readDisk(file);
    if (!disk.isUsable) {
        reason = disk.reason;
        return false;
    }
    if (m_base && m_basePath != file.path())
        m_base.reset(); // the application has another name by now, and so another file
    const bool isPresent = disk.document.has_value();
    SettingsDocument mine = ours();
    std::optional<SettingsDocument> merged;
    if (isPresent)
        merged = SettingsDocument::merged(m_base ? *m_base : SettingsDocument(), mine, *disk.document);
    const SettingsDocument& result = merged ? *merged : mine;

    // What is there already is not written again: that would only push out the generation before.
    if (isPresent && !disk.isDamaged && result == *disk.document && file.isPrivate()) {
        m_base = std::move(mine);
        m_basePath = file.path();
        return true;
    }
    if (disk.isDamaged && !setAsideDamaged(file, disk, reason))
        return false;
    if (m_keepCopy && isPresent && !disk.isDamaged) {
        const std::string copy = file.keepCopy("kept", reason);
        if (copy.empty())
            return false;
        tell("Settings in " + printable(file.path()).str() + " have invalid values; a copy is kept as " +
             printable(copy).str());
    }
    if (!file.write(result.text(), !disk.isDamaged, reason))
        return false;
    m_base = std::move(mine);
    m_basePath = file.path();
    m_keepCopy = false;
    return true;
}

bool SettingsPrivate::saveTo(const std::string& otherPath)
{
    const SettingsFile file(otherPath);
    std::string reason;
    const SettingsFile::Contents present = file.read();
    bool saved = false;
    if (present.state == SettingsFile::State::Refused)
        reason = present.reason;
    else
        saved = file.write(ours().text(), false, reason);
    if (!saved)
        tell("Settings were not saved to " + printable(file.path()).str() + ": " + reason);
    return saved;
}

Settings::Settings(const VfString& path) : Settings(new SettingsPrivate(path)) {}

Settings::Settings(SettingsPrivate* body) : Referenced(body, true), d(body) {}

Settings& Settings::operator=(const Settings& other)
{
    SettingsPrivate* body = other.d; // read first: letting go of our own body may end other
    Referenced::operator=(other);
    d = body;
    return *this;
}

void Settings::setImp(const Referenced& other)
{
    auto* body = dynamic_cast<SettingsPrivate*>(other.getImp());
    *this = Settings(body);
}

Settings& Settings::global()
{
    // Never destroyed: objects of all libraries are registered with it, and exit handlers may save.
    static Settings& settings = *new Settings(new SettingsPrivate(std::nullopt));
    return settings;
}

Settings Settings::loadGlobal()
{
    global().load();
    return global();
}

bool Settings::load()
{
    return d->load();
}

bool Settings::save(const char* path)
{
    return path ? d->saveTo(path) : d->saveOwn();
}

const char* Settings::getSettingsFilePath() const
{
    return internedText(d->path().str());
}

void Settings::add(const SettingsObject& object)
{
    if (object.isValid())
        d->add(object);
}

} // namespace vfBase
