// SPDX-License-Identifier: MIT
// The element types that the framework keeps in containers, each with every operation of the family.
#include <velaforge/base/AssociativeIterator.h>
#include <velaforge/base/Iterator.h>
#include <velaforge/base/List.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/Pair.h>
#include <velaforge/base/Set.h>
#include <velaforge/base/Vector.h>
#include <velaforge/base/VfString.h>
#include <velaforge/base/VfVariant.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

#include <gmock/gmock.h>

#include <memory>

// Not unnamed: what is instantiated for types of one file only is warned about where it is not called.
namespace elements {

// Containers of pointers need no more of a class than its name.
class Module;
class Page;

class Window : public osg::Referenced
{
protected:
    ~Window() override = default;
};

} // namespace elements

using elements::Module;
using elements::Page;
using elements::Window;

// Every member function is compiled.
template class vfBase::Vector<std::shared_ptr<Module>>;
template class vfBase::Vector<Page*>;
template class vfBase::List<std::shared_ptr<Module>>;
template class vfBase::List<Page*>;
template class vfBase::List<vfBase::VfString>;
template class vfBase::List<osg::ref_ptr<Window>>;
template class vfBase::Set<std::shared_ptr<Module>>;
template class vfBase::Map<vfBase::VfString, vfBase::VfString>;
template class vfBase::Map<vfBase::VfString, std::shared_ptr<Module>>;
template class vfBase::Map<vfBase::VfString, osg::ref_ptr<Window>>;
template class vfBase::Map<vfBase::VfString, vfBase::VfVariant>;
template class vfBase::Pair<vfBase::VfString, vfBase::VfString>;
template class vfBase::Pair<vfBase::VfString, std::shared_ptr<Module>>;
template class vfBase::Pair<vfBase::VfString, osg::ref_ptr<Window>>;
template class vfBase::Iterator<vfBase::Vector<std::shared_ptr<Module>>>;
template class vfBase::Iterator<vfBase::Vector<Page*>>;
template class vfBase::Iterator<vfBase::List<std::shared_ptr<Module>>>;
template class vfBase::Iterator<vfBase::Set<std::shared_ptr<Module>>>;
template class vfBase::AssociativeIterator<vfBase::Map<vfBase::VfString, vfBase::VfString>>;
template class vfBase::AssociativeIterator<vfBase::Map<vfBase::VfString, std::shared_ptr<Module>>>;
template class vfBase::AssociativeIterator<vfBase::Map<vfBase::VfString, osg::ref_ptr<Window>>>;

namespace elements {

class Module
{};

class Page
{};

} // namespace elements

namespace {

/// A few elements, all different.
template <class T>
struct Elements;

template <>
struct Elements<std::shared_ptr<Module>>
{
    std::shared_ptr<Module> a = std::make_shared<Module>();
    std::shared_ptr<Module> b = std::make_shared<Module>();
};

template <>
struct Elements<Page*>
{
    Page pages[2];
    Page* a = &pages[0];
    Page* b = &pages[1];
};

template <>
struct Elements<vfBase::VfString>
{
    vfBase::VfString a = "a";
    vfBase::VfString b = "b";
};

template <>
struct Elements<osg::ref_ptr<Window>>
{
    osg::ref_ptr<Window> a = new Window;
    osg::ref_ptr<Window> b = new Window;
};

template <>
struct Elements<vfBase::VfVariant>
{
    vfBase::VfVariant a = vfBase::VfVariant(1);
    vfBase::VfVariant b = vfBase::VfVariant("b");
};

} // namespace

template <class T>
class SequenceOf : public testing::Test
{};

using SequenceTypes = testing::Types<std::shared_ptr<Module>, Page*, vfBase::VfString, osg::ref_ptr<Window>>;
TYPED_TEST_SUITE(SequenceOf, SequenceTypes);

TYPED_TEST(SequenceOf, BehavesAlikeForEachElementType)
{
    const Elements<TypeParam> some;
    vfBase::List<TypeParam> list;
    list << some.a << some.b << some.a;
    EXPECT_EQ(2u, list.count(some.a));
    EXPECT_EQ(1u, list.indexOf(some.b, 0));
    EXPECT_EQ(2u, list.lastIndexOf(some.a, vfBase::List<TypeParam>::npos));
    EXPECT_EQ(TypeParam(), list.value(3));
    list.swap(0, 1);
    EXPECT_EQ(some.b, list.first());
    vfBase::Vector<TypeParam> vector = list.toVector();
    EXPECT_EQ(3u, vector.size());
    vector.fill(some.b, vfBase::Vector<TypeParam>::npos);
    EXPECT_EQ(3u, vector.count(some.b));
    EXPECT_EQ(2u, list.toSet().size());
    EXPECT_EQ(2u, list.removeAll(some.a));
    EXPECT_EQ(1u, list.size());
    EXPECT_EQ(some.b, list.takeFirst());
    EXPECT_TRUE(list.isEmpty());
}

template <class T>
class MapTo : public testing::Test
{};

using ValueTypes =
    testing::Types<vfBase::VfString, std::shared_ptr<Module>, osg::ref_ptr<Window>, vfBase::VfVariant>;
TYPED_TEST_SUITE(MapTo, ValueTypes);

TYPED_TEST(MapTo, BehavesAlikeForEachValueType)
{
    const Elements<TypeParam> some;
    vfBase::Map<vfBase::VfString, TypeParam> map;
    map.insert("one", some.a);
    map.insert("two", some.b);
    EXPECT_EQ(vfBase::VfString("two"), map.key(some.b));
    EXPECT_EQ(some.a, map.value("one"));
    EXPECT_EQ(TypeParam(), map.value("three"));
    EXPECT_EQ(2u, map.keys().size());
    EXPECT_EQ(some.b, map.values().last());
    EXPECT_TRUE(map.remove("one"));
    EXPECT_FALSE(map.contains("one"));
}

TEST(ContainerInstantiations, ASharedElementLivesAsLongAsAContainerHoldsIt)
{
    vfBase::Set<std::shared_ptr<Module>> set;
    std::weak_ptr<Module> watched;
    {
        const auto module = std::make_shared<Module>();
        watched = module;
        set.insert(module);
    }
    EXPECT_FALSE(watched.expired());
    set.clear();
    EXPECT_TRUE(watched.expired());
}
