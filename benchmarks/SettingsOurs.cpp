// SPDX-License-Identifier: MIT
// settings_ours save|load <file>: the records through this project's store. Status 0 when all of them are right.
#include "SettingsRecords.h"

#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>

#include <memory>

namespace {

class GroupSettings : public vfBase::SettingsObjectPrivate
{
public:
    explicit GroupSettings(const records::Group& aGroup) : group(aGroup) {}

    osg::Object* cloneType() const override { return new GroupSettings(records::Group()); }
    osg::Object* clone(const osg::CopyOp&) const override { return new GroupSettings(group); }
    bool isSameKindAs(const osg::Object* object) const override
    {
        return dynamic_cast<const GroupSettings*>(object);
    }
    const char* libraryName() const override { return "benchmark"; }
    const char* className() const override { return "Group"; }
    const char* tagName() const override { return group.name.c_str(); }

    records::Group group;

protected:
    ~GroupSettings() override = default;
};

template <class T>
vfBase::SettingsProperties::Property property(int index, std::vector<T> records::Group::*values)
{
    const std::size_t place = records::placeOf(index);
    return vfBase::SettingsProperties::property<GroupSettings>(
        records::valueName(index).c_str(),
        [=](const GroupSettings& settings) {
            return vfBase::SettingsValue(static_cast<T>((settings.group.*values)[place]));
        },
        [=](GroupSettings& settings, const vfBase::SettingsValue& value) {
            T read{};
            if (!value.read(read))
                return false;
            (settings.group.*values)[place] = read;
            return true;
        });
}

std::vector<vfBase::SettingsProperties::Property> properties()
{
    std::vector<vfBase::SettingsProperties::Property> all;
    for (int i = 0; i < records::valueCount; ++i) {
        switch (records::kindOf(i)) {
        case 0:
            all.push_back(property(i, &records::Group::texts));
            break;
        case 1:
            all.push_back(property(i, &records::Group::numbers));
            break;
        case 2:
            all.push_back(property(i, &records::Group::sizes));
            break;
        default:
            all.push_back(property(i, &records::Group::flags));
        }
    }
    return all;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const bool isSaving = std::string(argv[1]) == "save";
    const vfBase::SettingsProperties list("benchmark::Group", properties());
    vfBase::Settings settings{vfBase::VfString(argv[2])};
    std::vector<osg::ref_ptr<GroupSettings>> groups;
    for (int i = 0; i < records::groupCount; ++i) {
        groups.push_back(new GroupSettings(records::makeGroup(i, isSaving)));
        settings.add(vfBase::SettingsObject(groups.back().get()));
    }
    if (isSaving)
        return settings.save(nullptr) ? 0 : 1;
    if (!settings.load())
        return 1;
    for (int i = 0; i < records::groupCount; ++i) {
        if (!records::isWhole(i, groups[static_cast<std::size_t>(i)]->group))
            return 1;
    }
    return 0;
}
