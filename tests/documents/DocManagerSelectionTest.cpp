// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using vfApplication::DocManager;
using vfApplication::DocTemplate;
using vfBase::Options;
using vfBase::VfString;

namespace {

/// A manager whose user sees what is offered.
struct Manager : DocManager
{
    DocTemplate* selectDocumentTypeUser(DocTemplate** templates, int count) override
    {
        offered.clear();
        asked = count;
        for (unsigned int i = 0; i < expected; ++i)
            offered.push_back(templates[i]);
        return expected ? templates[chosen] : nullptr;
    }

    DocTemplate* add(const char* description, const char* document, const char* view, const char* filter = "",
                     const char* extension = "none", int flags = 1)
    {
        return new DocTemplate(this, description, filter, "", extension, document, view, nullptr, nullptr,
                               flags, 0, Options());
    }

    std::vector<DocTemplate*> all() const { return getTemplates().asStdVector(); }

    DocTemplate* type(bool sort = false)
    {
        std::vector<DocTemplate*> array = all();
        return selectDocumentType(array.data(), static_cast<int>(array.size()), sort);
    }
    DocTemplate* view(bool sort = false)
    {
        std::vector<DocTemplate*> array = all();
        return selectViewType(array.data(), static_cast<int>(array.size()), sort);
    }

    std::vector<DocTemplate*> offered;
    unsigned int expected = 0; ///< how many to look at
    unsigned int chosen = 0;
    int asked = -1;
};

} // namespace

TEST(FindTemplateForPath, OfTwoFiltersThatNameAnExtensionTheFirstWins)
{
    Manager manager;
    DocTemplate* first = manager.add("1", "D", "V", "stl,ply", "aaa");
    manager.add("2", "D", "V", "ply,obj", "bbb");
    EXPECT_EQ(first, manager.findTemplateForPath("a.ply"));
    EXPECT_EQ(first, manager.findTemplateForPath("a.PLY"));
}

TEST(FindTemplateForPath, ALaterDefaultExtensionBeatsAnEarlierFilter)
{
    Manager manager;
    DocTemplate* all = manager.add("1", "D", "V", "*", "aaa");
    manager.add("2", "D", "V", "ply", "bbb");
    DocTemplate* exact = manager.add("3", "D", "V", "", "ply");
    EXPECT_EQ(exact, manager.findTemplateForPath("a.ply"));
    EXPECT_EQ(all, manager.findTemplateForPath("a.unknown"));
    EXPECT_EQ(all, manager.findTemplateForPath("noextension"));
}

TEST(FindTemplateForPath, FoldsTheDefaultExtensionToLowerCase)
{
    Manager manager;
    DocTemplate* capital = manager.add("1", "D", "V", "", "OBJ");
    EXPECT_FALSE(capital->fileMatchesTemplate("a.obj"));
    EXPECT_EQ(capital, manager.findTemplateForPath("a.obj"));
    EXPECT_EQ(capital, manager.findTemplateForPath("a.Obj"));
    EXPECT_EQ(nullptr, manager.findTemplateForPath("a.stl"));
}

TEST(FindTemplateForPath, APathWithoutAnExtensionHitsAnEmptyDefaultExtension)
{
    Manager manager;
    manager.add("1", "D", "V", "*", "obj");
    DocTemplate* empty = manager.add("2", "D", "V", "", "");
    EXPECT_EQ(empty, manager.findTemplateForPath("noextension"));
}

TEST(FindTemplateForPath, FindsAnInvisibleTemplateAndSoDoesTheNativeOne)
{
    Manager manager;
    DocTemplate* hidden = manager.add("1", "D", "V", "stl", "stl", 2);
    manager.add("2", "D", "V", "stl", "stl", 3);
    EXPECT_EQ(hidden, manager.findTemplateForPath("a.stl"));
    EXPECT_EQ(hidden, manager.getNativeTemplate());
    EXPECT_EQ(nullptr, Manager().getNativeTemplate());
    EXPECT_EQ(nullptr, Manager().findTemplateForPath("a.stl"));
}

TEST(SelectDocumentType, NeverOffersAnInvisibleTemplate)
{
    Manager manager;
    manager.add("1", "D", "V", "", "x", 2);
    EXPECT_EQ(nullptr, manager.type());
    DocTemplate* visible = manager.add("2", "E", "V");
    EXPECT_EQ(visible, manager.type());
    EXPECT_EQ(-1, manager.asked);
}

TEST(SelectDocumentType, TakesTemplatesWithEqualNamesForOneWhateverTheirDescription)
{
    Manager manager;
    DocTemplate* first = manager.add("one", "D", "V");
    manager.add("two", "D", "V");
    EXPECT_EQ(first, manager.type());
    EXPECT_EQ(-1, manager.asked);
}

TEST(SelectDocumentType, KeepsEqualDocumentsWithDifferentViewsAndAsks)
{
    Manager manager;
    DocTemplate* first = manager.add("one", "D", "V");
    DocTemplate* second = manager.add("two", "D", "W");
    manager.add("three", "D", "V");
    manager.expected = 2;
    manager.chosen = 1;
    EXPECT_EQ(second, manager.type());
    EXPECT_THAT(manager.offered, ElementsAre(first, second));
    EXPECT_EQ(3, manager.asked); // the count that came in, not the number kept
}

TEST(SelectDocumentType, OfNoneIsNullAndNobodyIsAsked)
{
    Manager manager;
    EXPECT_EQ(nullptr, manager.selectDocumentType(nullptr, 0, false));
    EXPECT_EQ(nullptr, manager.selectDocumentType(nullptr, 0, true));
    EXPECT_EQ(-1, manager.asked);
}

TEST(SelectDocumentType, SortsByDescriptionWithCapitalsFirst)
{
    Manager manager;
    DocTemplate* b = manager.add("b", "1", "V");
    DocTemplate* a = manager.add("a", "2", "V");
    DocTemplate* capital = manager.add("C", "3", "V");
    manager.expected = 3;
    manager.type(true);
    EXPECT_THAT(manager.offered, ElementsAre(capital, a, b));
    manager.type(false);
    EXPECT_THAT(manager.offered, ElementsAre(b, a, capital));
}

TEST(SelectDocumentType, SortedTheLastTemplateOfADescriptionStandsForAllAlsoAnInvisibleOne)
{
    Manager manager;
    manager.add("same", "1", "V");
    manager.add("same", "2", "V");
    DocTemplate* hidden = manager.add("same", "3", "V", "", "x", 0);
    manager.expected = 2;
    manager.type(true);
    EXPECT_THAT(manager.offered, ElementsAre(hidden, hidden));
}

TEST(SelectViewType, OfTwoVisibleViewNamesIsNull)
{
    Manager manager;
    manager.add("1", "D", "V");
    manager.add("2", "D", "W");
    EXPECT_EQ(nullptr, manager.view());
    EXPECT_EQ(nullptr, manager.view(true));
    EXPECT_EQ(-1, manager.asked);
}

TEST(SelectViewType, PassesInvisibleTemplatesAndEmptyViewNamesOver)
{
    Manager manager;
    manager.add("1", "D", "V", "", "x", 0);
    manager.add("2", "D", "");
    DocTemplate* only = manager.add("3", "D", "W");
    EXPECT_EQ(only, manager.view());
    Manager empty;
    empty.add("1", "D", "");
    empty.add("2", "E", "");
    EXPECT_EQ(nullptr, empty.view());
}

TEST(SelectViewType, TakesEqualViewNamesForOneAndSortedTheLastStandsForThem)
{
    Manager manager;
    DocTemplate* first = manager.add("1", "D", "V");
    DocTemplate* last = manager.add("2", "E", "V");
    EXPECT_EQ(first, manager.view());
    EXPECT_EQ(last, manager.view(true));
}

TEST(NameFilters, PutEachItemBetweenPrefixAndSeparator)
{
    vfTest::RecordingApplication bench;
    makeTemplate(bench.manager, "obj,stl", "obj", 1);
    EXPECT_EQ("*.obj;*.stl;", bench.manager.getNameFilters(1, ';', "*."));
}

TEST(NameFilters, KeepCaseAndStarsAndTakeTemplatesByAnyBit)
{
    vfTest::RecordingApplication bench;
    makeTemplate(bench.manager, "OBJ,*", "obj", 1);
    makeTemplate(bench.manager, "ive", "ive", 2);
    makeTemplate(bench.manager, "obj", "obj", 64 | 1);
    EXPECT_EQ("OBJ|*|obj|", bench.manager.getNameFilters(1, '|', ""));
    EXPECT_EQ("ive|", bench.manager.getNameFilters(2, '|', ""));
    EXPECT_EQ("obj|", bench.manager.getNameFilters(64, '|', ""));
    EXPECT_EQ("", bench.manager.getNameFilters(0, '|', ""));
}
