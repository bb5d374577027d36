// SPDX-License-Identifier: MIT
#include "support/RefusedCalls.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Printable.h>
#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>
#include <velaforge/base/StringList.h>

#include <gmock/gmock.h>

#include <cerrno>
#include <cmath>
#include <filesystem>
#include <limits>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::Not;
using vfBase::Settings;
using vfBase::SettingsObject;
using vfBase::SettingsProperties;
using vfBase::SettingsValue;
using vfBase::StringList;
using vfBase::VfString;
using vfTest::readFile;
using vfTest::TemporaryDirectory;

namespace {

/// A settings object with a property of each kind.
class Planet : public vfBase::SettingsObjectPrivate
{
public:
    explicit Planet(const char* name = "Planet") : m_name(name) {}
    Planet(const Planet& other, const osg::CopyOp& copyop)
        : SettingsObjectPrivate(other, copyop), m_name(other.m_name)
    {}

    osg::Object* cloneType() const override { return new Planet; }
    osg::Object* clone(const osg::CopyOp& copyop) const override { return new Planet(*this, copyop); }
    bool isSameKindAs(const osg::Object* object) const override
    {
        return dynamic_cast<const Planet*>(object);
    }
    const char* libraryName() const override { return "solar"; }
    const char* className() const override { return "Planet"; }
    const char* tagName() const override { return m_name; }

    const std::string& getText() const { return text; }
    void setText(const std::string& value) { text = value; }
    int getNumber() const { return number; }
    void setNumber(int value) { number = value; }
    double getReal() const { return real; }
    void setReal(double value) { real = value; }
    bool getSwitch() const { return isOn; }
    void setSwitch(bool value) { isOn = value; }
    VfString getBytes() const { return bytes; }
    void setBytes(const VfString& value) { bytes = value; }

    std::string text = "default";
    int number = 1;
    double real = 0.5;
    bool isOn = false;
    VfString bytes;
    StringList list{0};
    std::map<std::string, int> moons;

protected:
    ~Planet() override = default;

private:
    const char* m_name;
};

const SettingsProperties
    properties("solar::Planet",
               {SettingsProperties::property("text", &Planet::getText, &Planet::setText),
                SettingsProperties::property("number", &Planet::getNumber, &Planet::setNumber),
                SettingsProperties::property("real", &Planet::getReal, &Planet::setReal),
                SettingsProperties::property("switch", &Planet::getSwitch, &Planet::setSwitch),
                SettingsProperties::property("bytes", &Planet::getBytes, &Planet::setBytes),
                SettingsProperties::property<Planet>(
                    "list", [](const Planet& planet) { return SettingsValue(planet.list); },
                    [](Planet& planet, const SettingsValue& value) { return value.read(planet.list); }),
                SettingsProperties::property<Planet>(
                    "moons",
                    [](const Planet& planet) {
                        SettingsValue::Map map;
                        for (const auto& [name, size] : planet.moons)
                            map[name] = size;
                        return SettingsValue(map);
                    },
                    [](Planet& planet, const SettingsValue& value) {
                        std::map<std::string, int> moons;
                        for (const auto& [name, size] : value.map() ? *value.map() : SettingsValue::Map()) {
                            if (!size.read(moons[name]))
                                return false;
                        }
                        planet.moons = moons;
                        return value.map() != nullptr;
                    })});

/// A store with one object, as a program has it.
struct Program
{
    explicit Program(const std::string& path) : settings(VfString(path)), planet(new Planet)
    {
        settings.add(SettingsObject(planet.get()));
    }

    bool load() { return settings.load(); }
    bool save() { return settings.save(nullptr); }

    Settings settings;
    osg::ref_ptr<Planet> planet;
};

/// What a fresh program finds.
std::string textIn(const std::string& path)
{
    Program program(path);
    program.load();
    return program.planet->text;
}

bool exists(const std::string& path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

/// Collects what is told, as a person at a terminal sees it.
class Told
{
public:
    Told() { testing::internal::CaptureStderr(); }
    std::string stop() { return testing::internal::GetCapturedStderr(); }
};

class SettingsStore : public testing::Test
{
protected:
    SettingsStore() { vfBase::NotifyHandler::instance().install(); }

    /// Saves two generations, "first" and then "second".
    void saveTwice() const
    {
        Program program(path);
        program.planet->text = "first";
        ASSERT_TRUE(program.save());
        program.planet->text = "second";
        ASSERT_TRUE(program.save());
    }

    TemporaryDirectory directory;
    std::string path = directory.file("solar.json");
};

} // namespace

TEST_F(SettingsStore, KeepsAValueOfEachKind)
{
    {
        Program program(path);
        program.load();
        Planet& planet = *program.planet;
        planet.text = "Mars \xE2\x99\x82 \"quoted\"\n";
        planet.number = -7;
        planet.real = 1.0 / 3;
        planet.isOn = true;
        planet.bytes = std::string("\xFF\x00 not text", 11);
        planet.list.append("/models/a.obj");
        planet.list.append("b\xFE");
        planet.moons = {{"Phobos", 11}, {"Dei\xFFmos", 6}};
        ASSERT_TRUE(program.save());
    }
    Program program(path);
    ASSERT_TRUE(program.load());
    const Planet& planet = *program.planet;
    EXPECT_EQ("Mars \xE2\x99\x82 \"quoted\"\n", planet.text);
    EXPECT_EQ(-7, planet.number);
    EXPECT_EQ(1.0 / 3, planet.real);
    EXPECT_TRUE(planet.isOn);
    EXPECT_EQ(std::string("\xFF\x00 not text", 11), planet.bytes.str());
    ASSERT_EQ(2u, planet.list.size());
    EXPECT_EQ("b\xFE", planet.list.get(1).str());
    EXPECT_EQ((std::map<std::string, int>{{"Phobos", 11}, {"Dei\xFFmos", 6}}), planet.moons);
}

TEST_F(SettingsStore, KeepsTextThatLooksLikeEncodedBytesAndNumbersThatAreNotFinite)
{
    for (const double number :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN(), 1e-308, -0.0})
    {
        Program program(path);
        program.planet->text = "$bytes:41";
        program.planet->real = number;
        ASSERT_TRUE(program.save());
        Program fresh(path);
        ASSERT_TRUE(fresh.load());
        EXPECT_EQ("$bytes:41", fresh.planet->text);
        EXPECT_TRUE(fresh.planet->real == number || (std::isnan(number) && std::isnan(fresh.planet->real)));
    }
}

TEST_F(SettingsStore, TheFileCanBeReadAndEditedByAPerson)
{
    Program(path).save();
    const std::string text = readFile(path);
    EXPECT_THAT(text, HasSubstr("\"format\": 1"));
    EXPECT_THAT(text, HasSubstr("\"solar::Planet\": {"));
    EXPECT_THAT(text, HasSubstr("\n        \"text\": \"default\""));
    EXPECT_EQ('\n', text.back());
    directory.write("solar.json", "{\"solar::Planet\":{\"text\":\"typed\"}}");
    EXPECT_EQ("typed", textIn(path));
}

TEST_F(SettingsStore, BytesTypedByHandAreReadInEitherCaseAndOtherTextStaysText)
{
    const std::vector<std::pair<std::string, std::string>> typed{{"$bytes:c3BC41", "\xC3\xBC"
                                                                                   "A"},
                                                                 {"$bytes:4", "$bytes:4"},
                                                                 {"$bytes:4g", "$bytes:4g"},
                                                                 {"$bytes:", ""}};
    for (const auto& [text, meaning] : typed) {
        directory.write("solar.json", "{\"solar::Planet\":{\"text\":\"" + text + "\"}}");
        EXPECT_EQ(meaning, textIn(path));
    }
}

TEST_F(SettingsStore, WithoutAFileTheObjectsKeepTheirDefaults)
{
    Program program(path);
    Told told;
    EXPECT_FALSE(program.load());
    EXPECT_EQ("", told.stop());
    EXPECT_EQ("default", program.planet->text);
}

TEST_F(SettingsStore, MakesMissingDirectoriesForItsOwnFileOnly)
{
    const std::string deep = directory.file("a/b/c/solar.json");
    Program program(deep);
    EXPECT_TRUE(program.save());
    struct stat status;
    ASSERT_EQ(0, stat(directory.file("a/b").c_str(), &status));
    EXPECT_EQ(0700u, status.st_mode & 0777u);
    Told told;
    EXPECT_FALSE(program.settings.save(directory.file("x/y.json").c_str()));
    EXPECT_THAT(told.stop(), HasSubstr("No such file or directory"));
    EXPECT_TRUE(program.settings.save(directory.file("copy.json").c_str()));
    EXPECT_EQ(readFile(deep), readFile(directory.file("copy.json")));
}

TEST_F(SettingsStore, TheFileIsPrivateToItsUser)
{
    umask(0);
    Program(path).save();
    struct stat status;
    ASSERT_EQ(0, stat(path.c_str(), &status));
    EXPECT_EQ(0600u, status.st_mode & 0777u);
    ASSERT_EQ(0, stat(directory.file(".solar.json.lock").c_str(), &status));
    EXPECT_EQ(0600u, status.st_mode & 0777u);
}

TEST_F(SettingsStore, ALinkToTheFileStaysALinkAlsoADanglingOne)
{
    const std::string link = directory.file("link.json");
    mkdir(directory.file("real").c_str(), 0700);
    ASSERT_EQ(0, symlink("real/solar.json", link.c_str()));
    Program program(link);
    program.planet->text = "to the link";
    ASSERT_TRUE(program.save());
    program.planet->text = "through the link";
    ASSERT_TRUE(program.save());
    struct stat status;
    ASSERT_EQ(0, lstat(link.c_str(), &status));
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    EXPECT_EQ("through the link", textIn(directory.file("real/solar.json")));
    EXPECT_TRUE(exists(directory.file("real/solar.json.previous")));
}

TEST_F(SettingsStore, KeepsTheGenerationBeforeBesideTheFile)
{
    saveTwice();
    EXPECT_EQ("second", textIn(path));
    EXPECT_EQ("first", textIn(path + ".previous"));
    EXPECT_FALSE(exists(path + ".new"));
}

TEST_F(SettingsStore, WhatIsThereAlreadyIsNotWrittenAgainSoThatTheGenerationBeforeStays)
{
    saveTwice();
    struct stat before;
    ASSERT_EQ(0, stat(path.c_str(), &before));
    Program program(path);
    program.load();
    EXPECT_TRUE(program.save());
    struct stat after;
    ASSERT_EQ(0, stat(path.c_str(), &after));
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ("first", textIn(path + ".previous"));
}

TEST_F(SettingsStore, AFileThatOthersMayReadIsMadePrivateByTheNextSave)
{
    saveTwice();
    chmod(path.c_str(), 0644);
    Program program(path);
    program.load();
    EXPECT_TRUE(program.save());
    struct stat status;
    ASSERT_EQ(0, stat(path.c_str(), &status));
    EXPECT_EQ(0600u, status.st_mode & 0777u);
}

TEST_F(SettingsStore, AFileCutAtAnyByteIsSetAsideAndTheGenerationBeforeIsTaken)
{
    saveTwice();
    const std::string whole = readFile(path);
    const std::string previous = readFile(path + ".previous");
    for (std::size_t length = 0; length + 2 < whole.size(); ++length) {
        const TemporaryDirectory place;
        place.write("solar.json", whole.substr(0, length));
        place.write("solar.json.previous", previous);
        Told told;
        Program program(place.file("solar.json"));
        EXPECT_TRUE(program.load()) << length;
        EXPECT_THAT(told.stop(), HasSubstr("damaged")) << length;
        ASSERT_EQ("first", program.planet->text) << length;
        ASSERT_EQ(whole.substr(0, length), readFile(place.file("solar.json.damaged-1"))) << length;
        ASSERT_EQ(previous, readFile(place.file("solar.json"))) << length;
    }
}

TEST_F(SettingsStore, ADamagedFileOfAnyKindIsNeverOverwrittenSilently)
{
    saveTwice();
    const std::string previous = readFile(path + ".previous");
    std::string deep = "1";
    for (int level = 0; level < 65; ++level)
        deep = "{\"deep\": [0, 0], \"deeper\": " + deep + "}";
    const std::string kinds[] = {"",
                                 deep,
                                 std::string(4096, '\0'),
                                 "not JSON at all",
                                 "[1, 2, 3]",
                                 "\"text\"",
                                 "{\"format\": \"one\"}",
                                 "{\"format\": 1} and more",
                                 "{\"a\": \"\xFF\xFE\"}",
                                 std::string(200000, '['),
                                 "{\"a\":" + std::string(65, '[') + std::string(65, ']') + "}",
                                 "{\"a\": 1e999}",
                                 std::string(std::size_t{17} * 1024 * 1024, ' ') + "{}"};
    for (const std::string& text : kinds) {
        const TemporaryDirectory place;
        place.write("solar.json", text);
        place.write("solar.json.previous", previous);
        Program program(place.file("solar.json"));
        Told told;
        EXPECT_TRUE(program.load());
        EXPECT_THAT(told.stop(), HasSubstr("damaged")) << text.substr(0, 40);
        EXPECT_EQ("first", program.planet->text) << text.substr(0, 40);
        EXPECT_EQ(text, readFile(place.file("solar.json.damaged-1"))) << text.substr(0, 40);
        EXPECT_TRUE(program.save());
        EXPECT_EQ("first", textIn(place.file("solar.json")));
    }
}

TEST_F(SettingsStore, WithBothGenerationsDamagedTheDefaultsAreUsedAndBothAreKept)
{
    directory.write("solar.json", "cut");
    directory.write("solar.json.previous", "cut too");
    Program program(path);
    Told told;
    EXPECT_FALSE(program.load());
    EXPECT_THAT(told.stop(), HasSubstr("defaults are used"));
    EXPECT_EQ("default", program.planet->text);
    EXPECT_EQ("cut", readFile(path + ".damaged-1"));
    EXPECT_EQ("cut too", readFile(path + ".previous"));
}

TEST_F(SettingsStore, EachDamagedFileGetsANameOfItsOwn)
{
    for (const char* text : {"one", "two", "three"}) {
        directory.write("solar.json", text);
        Told told;
        Program(path).load();
        told.stop();
    }
    EXPECT_EQ("one", readFile(path + ".damaged-1"));
    EXPECT_EQ("two", readFile(path + ".damaged-2"));
    EXPECT_EQ("three", readFile(path + ".damaged-3"));
}

TEST_F(SettingsStore, AFileDamagedBetweenLoadAndSaveIsSetAsideToo)
{
    saveTwice();
    Program program(path);
    program.load();
    directory.write("solar.json", "cut");
    program.planet->number = 5;
    Told told;
    EXPECT_TRUE(program.save());
    EXPECT_THAT(told.stop(), HasSubstr("damaged"));
    EXPECT_EQ("cut", readFile(path + ".damaged-1"));
    Program fresh(path);
    fresh.load();
    EXPECT_EQ(5, fresh.planet->number);
}

TEST_F(SettingsStore, SixtyFourLevelsAreRead)
{
    const std::string nested = "{\"other\":" + std::string(63, '[') + std::string(63, ']') +
                               ",\"solar::Planet\":{\"text\":\"deep\"}}";
    directory.write("solar.json", nested);
    EXPECT_EQ("deep", textIn(path));
    std::string wide = "{\"other\":[[]";
    for (int i = 0; i < 200; ++i)
        wide += ",[]";
    directory.write("solar.json", wide + "],\"solar::Planet\":{\"text\":\"wide\"}}");
    EXPECT_EQ("wide", textIn(path));
}

TEST_F(SettingsStore, AValueOfTheWrongTypeKeepsItsDefaultTheRestIsTakenAndACopyIsKept)
{
    const std::string edited =
        "{\"solar::Planet\":{\"text\":5,\"number\":\"x\",\"real\":[],\"switch\":1,\"list\":[1],"
        "\"moons\":{\"Io\":\"big\"},\"bytes\":\"taken\"}}";
    directory.write("solar.json", edited);
    Program program(path);
    Told told;
    EXPECT_TRUE(program.load());
    const std::string lines = told.stop();
    for (const char* name : {"text", "number", "real", "switch", "list", "moons"})
        EXPECT_THAT(lines, HasSubstr(std::string("\"") + name + "\""));
    EXPECT_THAT(lines, Not(HasSubstr("\"bytes\"")));
    EXPECT_EQ("default", program.planet->text);
    EXPECT_EQ(1, program.planet->number);
    EXPECT_EQ(0.5, program.planet->real);
    EXPECT_FALSE(program.planet->isOn);
    EXPECT_EQ(0u, program.planet->list.size());
    EXPECT_EQ("taken", program.planet->bytes);
    EXPECT_EQ(edited, readFile(path));
    EXPECT_TRUE(program.save());
    EXPECT_EQ(edited, readFile(path + ".kept-1"));
    EXPECT_TRUE(program.save());
    EXPECT_FALSE(exists(path + ".kept-2"));
    EXPECT_EQ("default", textIn(path));
}

TEST_F(SettingsStore, AnEntryThatIsNoObjectIsToldAndKept)
{
    directory.write("solar.json", "{\"solar::Planet\":[1,2]}");
    Program program(path);
    Told told;
    EXPECT_TRUE(program.load());
    EXPECT_THAT(told.stop(), HasSubstr("solar::Planet"));
    EXPECT_TRUE(program.save());
    EXPECT_EQ("{\"solar::Planet\":[1,2]}", readFile(path + ".kept-1"));
    EXPECT_EQ("default", textIn(path));
}

TEST_F(SettingsStore, NumbersOutOfRangeAreOfTheWrongType)
{
    directory.write("solar.json", "{\"solar::Planet\":{\"number\":3000000000,\"real\":7}}");
    Program program(path);
    Told told;
    program.load();
    EXPECT_THAT(told.stop(), HasSubstr("\"number\""));
    EXPECT_EQ(1, program.planet->number);
    EXPECT_EQ(7.0, program.planet->real);
    directory.write("solar.json", "{\"solar::Planet\":{\"number\":18446744073709551615,\"real\":1e19}}");
    program.load();
    EXPECT_EQ(1, program.planet->number);
    EXPECT_EQ(1e19, program.planet->real);
    directory.write("solar.json", "{\"solar::Planet\":{\"number\":null,\"real\":18446744073709551615}}");
    program.load();
    EXPECT_EQ(1, program.planet->number);
    EXPECT_EQ(18446744073709551615.0, program.planet->real);
}

TEST_F(SettingsStore, EntriesAndKeysOfOthersComeBackOutAsTheyWentIn)
{
    directory.write("solar.json",
                    "{\"format\":1,\"other::Thing\":{\"deep\":[1,{\"x\":null}],\"big\":18446744073709551615},"
                    "\"note\":\"by hand\",\"solar::Planet\":{\"text\":\"a\",\"newer\":{\"y\":2.50}}}");
    Program program(path);
    program.load();
    program.planet->text = "b";
    ASSERT_TRUE(program.save());
    const std::string text = readFile(path);
    EXPECT_THAT(text, HasSubstr("18446744073709551615"));
    EXPECT_THAT(text, HasSubstr("\"x\": null"));
    EXPECT_THAT(text, HasSubstr("\"note\": \"by hand\""));
    EXPECT_THAT(text, HasSubstr("\"y\": 2.5"));
    EXPECT_EQ("b", textIn(path));
}

TEST_F(SettingsStore, AFileOfANewerFormatIsNeitherReadNorWritten)
{
    for (const char* format : {"2", "2147483648", "4294967297", "9223372036854775807", "9223372036854775808",
                               "18446744073709551615", "18446744073709551616", "1e300", "1.5", "0", "-1",
                               "-9223372036854775808", "-9223372036854775809"})
    {
        const std::string newer =
            std::string("{\"format\":") + format + ",\"solar::Planet\":{\"text\":\"new\"}}";
        directory.write("solar.json", newer);
        Program program(path);
        Told told;
        EXPECT_FALSE(program.load()) << format;
        EXPECT_FALSE(program.save()) << format;
        EXPECT_THAT(told.stop(), HasSubstr("newer version")) << format;
        EXPECT_EQ("default", program.planet->text) << format;
        EXPECT_EQ(newer, readFile(path)) << format;
        EXPECT_FALSE(exists(path + ".damaged-1")) << format;
    }
}

TEST_F(SettingsStore, AFormatThatAPersonWroteAsARealNumberIsKnown)
{
    directory.write("solar.json", "{\"format\":1.0,\"solar::Planet\":{\"text\":\"typed\"}}");
    EXPECT_EQ("typed", textIn(path));
}

TEST_F(SettingsStore, ADirectoryInThePlaceOfTheFileIsToldAndLeftAlone)
{
    mkdir(path.c_str(), 0700);
    Program program(path);
    Told told;
    EXPECT_FALSE(program.load());
    EXPECT_FALSE(program.save());
    EXPECT_THAT(told.stop(), HasSubstr("it is a directory"));
    EXPECT_TRUE(exists(path));
}

TEST_F(SettingsStore, AFifoInThePlaceOfTheFileHoldsNobodyUp)
{
    mkfifo(path.c_str(), 0600);
    Program program(path);
    Told told;
    EXPECT_FALSE(program.load());
    EXPECT_FALSE(program.save());
    EXPECT_FALSE(program.settings.save(path.c_str()));
    EXPECT_THAT(told.stop(), HasSubstr("not a regular file"));
    struct stat status;
    ASSERT_EQ(0, stat(path.c_str(), &status));
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(SettingsStore, AReadOnlyFileMakesTheSaveFailAndStaysAsItWas)
{
    saveTwice();
    const std::string before = readFile(path);
    chmod(path.c_str(), 0400);
    Program program(path);
    program.load();
    program.planet->text = "third";
    Told told;
    EXPECT_NO_THROW(EXPECT_FALSE(program.save()));
    const std::string lines = told.stop();
    EXPECT_THAT(lines, HasSubstr("not saved to"));
    EXPECT_THAT(lines, HasSubstr("Permission denied"));
    EXPECT_EQ(1, std::count(lines.begin(), lines.end(), '\n'));
    EXPECT_EQ(before, readFile(path));
    EXPECT_EQ("first", textIn(path + ".previous"));
}

TEST_F(SettingsStore, AReadOnlyOrUnreadablePlaceMakesTheSaveFail)
{
    saveTwice();
    chmod(directory.path().c_str(), 0555);
    chmod(path.c_str(), 0644);
    chmod((path + ".previous").c_str(), 0644);
    const pid_t child = fork();
    if (child == 0) {
        // Root may write everywhere, so another user has to try.
        const bool isOther = geteuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0);
        Program program(path);
        const bool loaded = program.load() && program.planet->text == "second";
        program.planet->text = "third";
        _exit(isOther && loaded && !program.save() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    chmod(directory.path().c_str(), 0755);
    EXPECT_EQ(0, status);
    EXPECT_EQ("second", textIn(path));
}

TEST_F(SettingsStore, AFileThatMayNotBeReadIsNotReplaced)
{
    saveTwice();
    const std::string before = readFile(path);
    chmod(directory.path().c_str(), 0777);
    chmod(path.c_str(), 0000);
    unlink(directory.file(".solar.json.lock").c_str());
    const pid_t child = fork();
    if (child == 0) {
        const bool isOther = geteuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0);
        Program program(path);
        _exit(isOther && !program.load() && !program.save() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    chmod(path.c_str(), 0600);
    EXPECT_EQ(0, status);
    EXPECT_EQ(before, readFile(path));
}

TEST_F(SettingsStore, ASaveBeyondAFileSizeLimitFailsAndLeavesTheFile)
{
    saveTwice();
    const std::string before = readFile(path);
    rlimit limit{before.size() / 2, RLIM_INFINITY};
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &limit));
    Program program(path);
    program.load();
    program.planet->text = "third";
    Told told;
    const bool saved = program.save();
    limit.rlim_cur = RLIM_INFINITY;
    setrlimit(RLIMIT_FSIZE, &limit);
    told.stop();
    EXPECT_FALSE(saved);
    EXPECT_EQ(before, readFile(path));
    EXPECT_EQ(3, std::distance(std::filesystem::directory_iterator(directory.path()), {}));
    EXPECT_EQ("first", textIn(path + ".previous"));
    EXPECT_TRUE(program.save());
    EXPECT_EQ("third", textIn(path));
}

TEST_F(SettingsStore, ASaveOnAFullDiskFailsAndLeavesTheFile)
{
    const std::string disk = directory.file("disk");
    mkdir(disk.c_str(), 0700);
    if (mount("none", disk.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no file system of its own can be mounted here";
    path = disk + "/solar.json";
    saveTwice();
    const std::string before = readFile(path);
    {
        const int filler = open((disk + "/filler").c_str(), O_WRONLY | O_CREAT, 0600);
        const std::string block(1024, 'x');
        while (write(filler, block.data(), block.size()) > 0) {
        }
        close(filler);
    }
    Program program(path);
    program.load();
    program.planet->text = std::string(8192, 'y');
    Told told;
    EXPECT_FALSE(program.save());
    EXPECT_THAT(told.stop(), HasSubstr("No space left on device"));
    EXPECT_EQ(before, readFile(path));
    unlink((disk + "/filler").c_str());
    EXPECT_TRUE(program.save());
    EXPECT_EQ(std::string(8192, 'y'), textIn(path));
    umount(disk.c_str());
}

TEST_F(SettingsStore, OnAFileSystemWithoutHardLinksTheGenerationBeforeIsACopy)
{
    saveTwice();
    EXPECT_TRUE(vfTest::passesWhereRefused(vfTest::linkCalls, EPERM, [&] {
        Program program(path);
        EXPECT_TRUE(program.load());
        program.planet->text = "third";
        EXPECT_TRUE(program.save());
    }));
    EXPECT_EQ("third", textIn(path));
    EXPECT_EQ("second", textIn(path + ".previous"));
    struct stat status = {};
    ASSERT_EQ(0, stat((path + ".previous").c_str(), &status));
    EXPECT_EQ(0600u, status.st_mode & 07777u);
}

TEST_F(SettingsStore, OnAFileSystemWithoutLocksItSavesAllTheSame)
{
    saveTwice();
    EXPECT_TRUE(vfTest::passesWhereRefused({SYS_flock}, ENOLCK, [&] {
        Program program(path);
        EXPECT_TRUE(program.load());
        program.planet->text = "third";
        EXPECT_TRUE(program.save());
    }));
    EXPECT_EQ("third", textIn(path));
}

TEST_F(SettingsStore, AnErrorOfTheDiskLeavesBothGenerations)
{
    saveTwice();
    const std::string before = readFile(path);
    for (const std::vector<long>& calls : {std::vector<long>{SYS_fsync}, vfTest::renameCalls}) {
        EXPECT_TRUE(vfTest::passesWhereRefused(calls, EIO, [&] {
            Program program(path);
            EXPECT_TRUE(program.load());
            program.planet->text = "third";
            Told told;
            EXPECT_FALSE(program.save());
            EXPECT_THAT(told.stop(), HasSubstr("Input/output error"));
        }));
        EXPECT_EQ(before, readFile(path));
        EXPECT_EQ("first", textIn(path + ".previous"));
        EXPECT_EQ(3, std::distance(std::filesystem::directory_iterator(directory.path()), {}));
    }
}

TEST_F(SettingsStore, ADamagedFileThatCannotBeReplacedIsToldAndTheGenerationBeforeIsTaken)
{
    saveTwice();
    directory.write("solar.json", "cut");
    EXPECT_TRUE(vfTest::passesWhereRefused(vfTest::renameCalls, EACCES, [&] {
        Told told;
        EXPECT_EQ("first", textIn(path));
        EXPECT_THAT(told.stop(), HasSubstr("could not be repaired: Permission denied"));
    }));
    EXPECT_EQ("cut", readFile(path));
}

TEST_F(SettingsStore, WhatCannotBeKeptIsNotOverwritten)
{
    // A damaged file, and one with a value that does not fit.
    for (const char* text : {"cut", "{\"solar::Planet\":{\"number\":\"x\"}}"}) {
        directory.write("solar.json", text);
        EXPECT_TRUE(vfTest::passesWhereRefused(vfTest::linkCalls, EEXIST, [&] {
            Program program(path);
            Told told;
            program.load();
            program.planet->text = "other";
            EXPECT_FALSE(program.save());
            EXPECT_THAT(told.stop(), HasSubstr("were not saved"));
        }));
        EXPECT_EQ(text, readFile(path));
    }
}

TEST_F(SettingsStore, APlaceBelowAFileMakesTheSaveFail)
{
    directory.write("file", "x");
    for (const char* name : {"file/solar.json", "file/deep/solar.json"}) {
        Program program(directory.file(name));
        Told told;
        EXPECT_FALSE(program.save());
        EXPECT_THAT(told.stop(), HasSubstr("Not a directory"));
    }
}

TEST_F(SettingsStore, WhatTheNextStartWouldRefuseToReadIsNotWritten)
{
    saveTwice();
    Program program(path);
    ASSERT_TRUE(program.load());
    program.planet->text.assign(17 * 1024 * 1024, 'x');
    Told told;
    EXPECT_FALSE(program.save());
    EXPECT_THAT(told.stop(), HasSubstr("larger than 16 MiB"));
    EXPECT_EQ("second", textIn(path));
}

TEST_F(SettingsStore, ClearsAwayWhatAnInterruptedSaveLeft)
{
    saveTwice();
    directory.write("solar.json.previous-new", "half a fi");
    const std::string draft = directory.write(".solar.json.draft-0123456789abcdef", "half a fi");
    Program program(path);
    EXPECT_TRUE(program.load());
    EXPECT_EQ("second", program.planet->text);
    EXPECT_FALSE(exists(path + ".previous-new"));
    EXPECT_FALSE(exists(draft));
}

TEST_F(SettingsStore, ACopyForAnotherPlaceLeavesFilesOfSimilarNamesThere)
{
    saveTwice();
    Program program(path);
    program.load();
    const std::string copy = directory.file("backup.json");
    directory.write("backup.json.new", "the user's");
    directory.write("backup.json.previous-new", "the user's");
    EXPECT_TRUE(program.settings.save(copy.c_str()));
    EXPECT_EQ("the user's", readFile(copy + ".new"));
    EXPECT_EQ("the user's", readFile(copy + ".previous-new"));
    EXPECT_EQ("second", textIn(copy));
}

TEST_F(SettingsStore, AMissingFileIsNotBroughtBackFromTheGenerationBefore)
{
    saveTwice();
    unlink(path.c_str());
    EXPECT_EQ("default", textIn(path));
}

TEST_F(SettingsStore, TwoProgramsThatChangeDifferentPropertiesLoseNothing)
{
    saveTwice();
    Program one(path);
    Program two(path);
    one.load();
    two.load();
    one.planet->text = "by one";
    two.planet->number = 22;
    EXPECT_TRUE(one.save());
    EXPECT_TRUE(two.save());
    Program fresh(path);
    fresh.load();
    EXPECT_EQ("by one", fresh.planet->text);
    EXPECT_EQ(22, fresh.planet->number);
    // One has never seen what two did, and leaves it alone once more.
    one.planet->isOn = true;
    EXPECT_TRUE(one.save());
    fresh.load();
    EXPECT_EQ(22, fresh.planet->number);
    EXPECT_TRUE(fresh.planet->isOn);
}

TEST_F(SettingsStore, ProgramsThatStartWithoutAFileMergeToo)
{
    Program one(path);
    Program two(path);
    one.load();
    two.load();
    one.planet->text = "by one";
    two.planet->number = 22;
    EXPECT_TRUE(one.save());
    EXPECT_TRUE(two.save());
    Program fresh(path);
    fresh.load();
    EXPECT_EQ("by one", fresh.planet->text);
    EXPECT_EQ(22, fresh.planet->number);
}

TEST_F(SettingsStore, MapsMergeByKeyAndRemovedKeysStayRemoved)
{
    {
        Program program(path);
        program.planet->moons = {{"Io", 1}, {"Europa", 2}};
        program.save();
    }
    Program one(path);
    Program two(path);
    one.load();
    two.load();
    one.planet->moons.erase("Io");
    two.planet->moons["Callisto"] = 3;
    EXPECT_TRUE(one.save());
    EXPECT_TRUE(two.save());
    Program fresh(path);
    fresh.load();
    EXPECT_EQ((std::map<std::string, int>{{"Europa", 2}, {"Callisto", 3}}), fresh.planet->moons);
}

TEST_F(SettingsStore, ManyProcessesThatSaveAtOnceLoseNothing)
{
    constexpr int processes = 6;
    constexpr int rounds = 15;
    std::vector<pid_t> children;
    for (int process = 0; process < processes; ++process) {
        const pid_t child = fork();
        if (child == 0) {
            bool ok = true;
            for (int round = 0; round < rounds; ++round) {
                Program program(path);
                program.load();
                program.planet->moons[std::to_string(process) + "-" + std::to_string(round)] = round;
                ok = program.save() && ok;
            }
            _exit(ok ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(0, status);
    }
    Program fresh(path);
    EXPECT_TRUE(fresh.load());
    EXPECT_EQ(static_cast<std::size_t>(processes * rounds), fresh.planet->moons.size());
}

TEST_F(SettingsStore, ALockThatIsNeverGivenBackMakesTheSaveFailInTheEnd)
{
    saveTwice();
    const int lock = open(directory.file(".solar.json.lock").c_str(), O_RDWR);
    ASSERT_EQ(0, flock(lock, LOCK_EX));
    Program program(path);
    EXPECT_TRUE(program.load());
    Told told;
    EXPECT_FALSE(program.save());
    EXPECT_THAT(told.stop(), HasSubstr("another program"));
    close(lock);
    EXPECT_TRUE(program.save());
}

TEST_F(SettingsStore, AnObjectThatIsAddedAfterTheLoadGetsItsValues)
{
    saveTwice();
    Settings settings{VfString(path)};
    settings.load();
    const osg::ref_ptr<Planet> late = new Planet;
    settings.add(SettingsObject(late.get()));
    EXPECT_EQ("second", late->text);
    EXPECT_TRUE(settings.save(nullptr));
    EXPECT_EQ("second", textIn(path));
}

TEST_F(SettingsStore, AnObjectReplacesOneOfTheSameNames)
{
    Program program(path);
    const osg::ref_ptr<Planet> second = new Planet;
    second->text = "the second";
    program.settings.add(SettingsObject(second.get()));
    program.planet->text = "the first";
    EXPECT_TRUE(program.save());
    EXPECT_EQ("the second", textIn(path));
}

TEST_F(SettingsStore, ObjectsWithNamesOfTheirOwnStandSideBySide)
{
    Program program(path);
    const osg::ref_ptr<Planet> venus = new Planet("Venus");
    venus->text = "hot";
    program.settings.add(SettingsObject(venus.get()));
    program.save();
    EXPECT_THAT(readFile(path), HasSubstr("\"solar::Venus\""));
    EXPECT_EQ("default", textIn(path));
}

TEST_F(SettingsStore, IsAHandleOnItsStore)
{
    Settings settings{VfString(path)};
    Settings copy = settings;
    EXPECT_EQ(path, copy.getSettingsFilePath());
    Settings other{VfString(directory.file("other.json"))};
    other = settings;
    EXPECT_EQ(path, other.getSettingsFilePath());
    vfBase::Referenced plain(settings);
    Settings third{VfString("x")};
    third.setImp(plain);
    EXPECT_EQ(path, third.getSettingsFilePath());
    EXPECT_FALSE(SettingsObject(vfBase::Referenced(settings)).isValid());
}

TEST_F(SettingsStore, TheGlobalStoresFileIsNamedByVendorAndApplication)
{
    setenv("XDG_CONFIG_HOME", directory.path().c_str(), 1);
    vfBase::ApplicationInfo::instance().setApplicationVendorShortName("vendor");
    vfBase::ApplicationInfo::instance().setApplicationName("../../viewer");
    EXPECT_EQ(directory.file("vendor/.._.._viewer.json"), Settings::global().getSettingsFilePath());
    vfBase::ApplicationInfo::instance().setApplicationName("viewer");
    vfBase::ApplicationInfo::instance().setApplicationVendorShortName("");
    EXPECT_EQ(directory.file("viewer.json"), Settings::global().getSettingsFilePath());
    Settings loaded = Settings::loadGlobal();
    EXPECT_TRUE(loaded == Settings::global());
    EXPECT_TRUE(Settings::global().save(nullptr));
    EXPECT_TRUE(exists(directory.file("viewer.json")));
}

TEST_F(SettingsStore, ThePathOfTheFileStaysReadableWhenTheNameChanges)
{
    setenv("XDG_CONFIG_HOME", directory.path().c_str(), 1);
    vfBase::ApplicationInfo& info = vfBase::ApplicationInfo::instance();
    const std::string name(100, 'a');
    info.setApplicationName(name.c_str());
    const char* const first = Settings::global().getSettingsFilePath();
    EXPECT_EQ(first, Settings::global().getSettingsFilePath());
    info.setApplicationName("another");
    EXPECT_EQ(directory.file("another.json"), Settings::global().getSettingsFilePath());
    EXPECT_EQ(directory.file(name + ".json"), first);

    const char* ofItsOwn = nullptr;
    {
        const Settings settings{VfString(path)};
        ofItsOwn = settings.getSettingsFilePath();
    }
    EXPECT_EQ(path, ofItsOwn);
}

TEST_F(SettingsStore, AnotherApplicationNameIsAnotherFile)
{
    setenv("XDG_CONFIG_HOME", directory.path().c_str(), 1);
    vfBase::ApplicationInfo& info = vfBase::ApplicationInfo::instance();
    const osg::ref_ptr<Planet> planet = new Planet;
    const vfBase::RegisterSettingsObjectProxy proxy(SettingsObject(planet.get()), Settings::global());
    info.setApplicationName("one");
    Settings::loadGlobal();
    planet->text = "of one";
    EXPECT_TRUE(Settings::global().save(nullptr));
    info.setApplicationName("two");
    EXPECT_TRUE(Settings::global().save(nullptr));
    EXPECT_EQ("of one", textIn(directory.file("two.json")));
}

TEST(SettingsObject, NamesItselfByItsClassUnlessItHasATag)
{
    const osg::ref_ptr<Planet> planet = new Planet;
    EXPECT_STREQ("Planet", planet->SettingsObjectPrivate::tagName());
    const SettingsObject handle(planet.get());
    EXPECT_TRUE(handle.isValid());
    EXPECT_EQ(planet.get(), handle.getImp());
    SettingsObject other(static_cast<vfBase::SettingsObjectPrivate*>(nullptr));
    EXPECT_FALSE(other.isValid());
    other = handle;
    EXPECT_TRUE(other == handle);
    EXPECT_EQ(planet.get(), other.getImp());
    SettingsObject bound(static_cast<vfBase::SettingsObjectPrivate*>(nullptr));
    static_cast<vfBase::Referenced&>(bound).setImp(handle);
    EXPECT_EQ(planet.get(), bound.getImp());
    EXPECT_TRUE(SettingsObject(static_cast<const vfBase::Referenced&>(handle)).isValid());
}
