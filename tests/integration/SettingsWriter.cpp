// SPDX-License-Identifier: MIT
// A program that keeps settings in a file: one value, to be killed at any moment,
//
//     settings_writer save <file> <value>
//         saves through the store; says "saved" on standard output when it was
//     settings_writer naive <file> <value>
//         saves as a careless program does
//     settings_writer print <file>
//         loads through the store and prints the value
//
// or places and recent files, beside other programs of its kind:
//
//     settings_writer visit <file> <name> <rounds> <gate>
//         loads, makes the file "<gate> <name>", waits until the file <gate> exists, then in each round keeps a
//         place, adds a recent file in front, and saves
//     settings_writer visits <file>
//         loads and prints the places, then the recent files

#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>
#include <velaforge/base/StringList.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <unistd.h>

namespace {

class Value : public vfBase::SettingsObjectPrivate
{
public:
    osg::Object* cloneType() const override { return new Value; }
    osg::Object* clone(const osg::CopyOp&) const override { return new Value; }
    bool isSameKindAs(const osg::Object* object) const override { return dynamic_cast<const Value*>(object); }
    const char* libraryName() const override { return "test"; }
    const char* className() const override { return "Value"; }

    const std::string& get() const { return m_text; }
    void set(const std::string& text) { m_text = text; }

protected:
    ~Value() override = default;

private:
    std::string m_text = "none";
};

const vfBase::SettingsProperties
    properties("test::Value", {vfBase::SettingsProperties::property("value", &Value::get, &Value::set)});

/// A map of places and a list of recent files.
class Visits : public vfBase::SettingsObjectPrivate
{
public:
    osg::Object* cloneType() const override { return new Visits; }
    osg::Object* clone(const osg::CopyOp&) const override { return new Visits; }
    bool isSameKindAs(const osg::Object* object) const override
    {
        return dynamic_cast<const Visits*>(object);
    }
    const char* libraryName() const override { return "test"; }
    const char* className() const override { return "Visits"; }

    vfBase::SettingsValue::Map places;
    vfBase::StringList files;

protected:
    ~Visits() override = default;
};

const vfBase::SettingsProperties visitsProperties(
    "test::Visits",
    {vfBase::SettingsProperties::property<Visits>(
         "places", [](const Visits& visits) { return vfBase::SettingsValue(visits.places); },
         [](Visits& visits, const vfBase::SettingsValue& value) {
             if (value.map())
                 visits.places = *value.map();
             return value.map() != nullptr;
         }),
     vfBase::SettingsProperties::property<Visits>(
         "files", [](const Visits& visits) { return vfBase::SettingsValue(visits.files); },
         [](Visits& visits, const vfBase::SettingsValue& value) { return value.read(visits.files); })});

int visit(const char* path, const std::string& name, int rounds, const char* gate)
{
    vfBase::Settings settings{vfBase::VfString(path)};
    const osg::ref_ptr<Visits> visits = new Visits;
    settings.add(vfBase::SettingsObject(visits.get()));
    settings.load();
    std::ofstream(std::string(gate) + " " + name) << "loaded";
    while (access(gate, F_OK) != 0)
        usleep(1000);
    for (int round = 0; round < rounds; ++round) {
        const std::string visited = name + "-" + std::to_string(round);
        visits->places[visited] = vfBase::SettingsValue::Map{{"angle", round}};
        visits->files.insert(0, visited);
        if (!settings.save(nullptr))
            return 1;
    }
    return 0;
}

int printVisits(const char* path)
{
    vfBase::Settings settings{vfBase::VfString(path)};
    const osg::ref_ptr<Visits> visits = new Visits;
    settings.add(vfBase::SettingsObject(visits.get()));
    if (!settings.load())
        return 1;
    for (const auto& place : visits->places)
        std::printf("place %s\n", place.first.c_str());
    for (unsigned int i = 0; i < visits->files.size(); ++i)
        std::printf("file %s\n", visits->files.get(i).c_str());
    return 0;
}

/// Where the save begins, for those who watch the system calls.
void mark()
{
    (void)access("/the-save-begins-here", F_OK);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return 2;
    const std::string task = argv[1];
    vfBase::NotifyHandler::instance().install();
    if (task == "visit" && argc == 6)
        return visit(argv[2], argv[3], std::atoi(argv[4]), argv[5]);
    if (task == "visits")
        return printVisits(argv[2]);
    if (task == "naive") {
        mark();
        std::ofstream file(argv[2]);
        // More than one write, as any real file.
        file << "{\"test::Value\":" << std::flush << "{\"value\":\"" << argv[3] << std::flush << "\"}}";
        file.close();
        std::puts("saved");
        return 0;
    }
    vfBase::Settings settings{vfBase::VfString(argv[2])};
    const osg::ref_ptr<Value> value = new Value;
    settings.add(vfBase::SettingsObject(value.get()));
    settings.load();
    if (task == "print") {
        std::puts(value->get().c_str());
        return 0;
    }
    value->set(argv[3]);
    mark();
    if (!settings.save(nullptr))
        return 1;
    std::puts("saved");
    return 0;
}
