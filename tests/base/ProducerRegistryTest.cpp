// SPDX-License-Identifier: MIT
#include "support/Slots.h"

#include <velaforge/base/Registry.h>
#include <velaforge/base/RegistryObjectProducerInterface.h>

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

using testing::ElementsAre;

namespace {

struct Product
{};

using Producer = vfBase::RegistryObjectProducerInterface<Product, const char*, vfBase::NilType>;

std::vector<std::string>& calls()
{
    static std::vector<std::string> all;
    return all;
}

struct RecordingProducer : Producer
{
    RecordingProducer(std::string producerName, const char* producerKey)
        : name(std::move(producerName)), key(producerKey)
    {}
    ~RecordingProducer() override { calls().push_back("~" + name); }
    const char* getKey() override
    {
        calls().push_back(name + " getKey");
        return key;
    }
    Product* create() override { return new Product; }

    std::string name;
    const char* key;
};

/// A registry of the test's own; as many of it as it likes, one after the other.
template <class Key>
struct TestRegistry : vfBase::Registry<TestRegistry<Key>, Producer, Key>
{
    static TestRegistry* instance(bool)
    {
        calls().push_back("instance");
        return current;
    }
    TestRegistry() { current = this; }
    ~TestRegistry() override
    {
        calls().push_back("~derived");
        current = nullptr;
    }
    void registryHook() override {}

    static TestRegistry* current;
};
template <class Key>
TestRegistry<Key>* TestRegistry<Key>::current = nullptr;

using ByText = TestRegistry<std::string>;
using ByPointer = TestRegistry<const char*>;

} // namespace

TEST(ProducerRegistry, AsksForTheKeyFirstAndThenForTheRegistry)
{
    ByText registry;
    const ByText::Proxy proxy(new RecordingProducer("one", "key"));
    EXPECT_THAT(calls(), ElementsAre("one getKey", "instance"));
    EXPECT_EQ(1u, registry.producers.count("key"));
}

TEST(ProducerRegistry, OfTwoProducersWithOneTextTheLaterStaysAndTheEarlierIsDeleted)
{
    ByText registry;
    const std::string sameText = "key";
    const ByText::Proxy first(new RecordingProducer("first", "key"));
    const ByText::Proxy second(new RecordingProducer("second", sameText.c_str()));
    EXPECT_THAT(calls(), ElementsAre("first getKey", "instance", "second getKey", "instance", "~first"));
    ASSERT_EQ(1u, registry.producers.size());
    EXPECT_EQ("second", static_cast<RecordingProducer&>(*registry.producers.at("key")).name);
}

TEST(ProducerRegistry, ByPointerEqualTextsAtDifferentAddressesAreTwoKeys)
{
    ByPointer registry;
    const std::string sameText = "key";
    const char* const literal = "key";
    const ByPointer::Proxy first(new RecordingProducer("first", literal));
    const ByPointer::Proxy second(new RecordingProducer("second", sameText.c_str()));
    EXPECT_EQ(2u, registry.producers.size());
    const ByPointer::Proxy third(new RecordingProducer("third", literal));
    EXPECT_EQ(2u, registry.producers.size());
    EXPECT_EQ("third", static_cast<RecordingProducer&>(*registry.producers.at(literal)).name);
    EXPECT_EQ("~first", calls().back());
}

TEST(ProducerRegistry, AProxyThatGoesLeavesItsProducerInTheTable)
{
    ByText registry;
    {
        const ByText::Proxy proxy(new RecordingProducer("one", "key"));
    }
    EXPECT_EQ(1u, registry.producers.size());
    EXPECT_THAT(calls(), ElementsAre("one getKey", "instance"));
}

TEST(ProducerRegistry, CopyingAProxyRegistersNothing)
{
    ByText registry;
    ByText::Proxy proxy(new RecordingProducer("one", "key"));
    calls().clear();
    ByText::Proxy copy(proxy);
    ByText::Proxy moved(std::move(proxy));
    EXPECT_EQ(&copy, &(copy = moved));
    EXPECT_EQ(&moved, &(moved = ByText::Proxy(copy)));
    EXPECT_THAT(calls(), testing::IsEmpty());
    EXPECT_EQ(1u, registry.producers.size());
}

TEST(ProducerRegistry, LetsItsProducersGoInTheOrderOfTheirKeysAfterTheDerivedClass)
{
    {
        ByText registry;
        for (const char* key : {"d", "b", "a", "c", "e"})
            ByText::Proxy proxy(new RecordingProducer(key, key));
        calls().clear();
    }
    EXPECT_THAT(calls(), ElementsAre("~derived", "~a", "~b", "~c", "~d", "~e"));
}

TEST(ProducerRegistry, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, vfTest::slotOf(&ByText::registryHook)); // behind the destructor
    EXPECT_EQ(2, vfTest::slotOf(&Producer::producerExtension));
    EXPECT_EQ(3, vfTest::slotOf(&Producer::getKey));
    EXPECT_EQ(4, vfTest::slotOf(&Producer::create));
    EXPECT_EQ(sizeof(void*), sizeof(ByText::Proxy)); // no data
}
