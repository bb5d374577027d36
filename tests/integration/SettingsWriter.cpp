// SPDX-License-Identifier: MIT
// A program that keeps one value in a settings file, to be killed at any moment.
//
//     settings_writer save <file> <value>    saves through the store; says "saved" on standard output when it was
//     settings_writer naive <file> <value>   saves as a careless program does
//     settings_writer print <file>           loads through the store and prints the value

#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>

#include <cstdio>
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
