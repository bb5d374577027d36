// SPDX-License-Identifier: MIT
#include "support/Recorder.h"
#include "support/Slots.h"

#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowRegistry.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::DockWindow;
using vfApplication::DockWindowRegistry;
using vfApplication::DockWindowRegistryPrivate;
using vfTest::record;
using vfTest::recorder;

namespace {

const char* const key = "solar::Layers";

struct WindowProducer : DockWindowRegistryPrivate::Producer
{
    explicit WindowProducer(std::string producerName) : name(std::move(producerName)) {}
    ~WindowProducer() override { record("~" + name); }
    const char* getKey() override
    {
        record(name + " getKey");
        return key;
    }
    DockWindow* create() override
    {
        record(name + " create");
        if (inCreate)
            inCreate();
        return new DockWindow(name.c_str());
    }

    std::string name;
    std::function<void()> inCreate;
};

} // namespace

TEST(DockWindowRegistry, MakesTheWindowOfTheVeryPointerThatTheProducerGave)
{
    const DockWindowRegistryPrivate::Proxy proxy(new WindowProducer("producer"));
    const std::unique_ptr<DockWindow> window(DockWindowRegistry::instance(false)->create(key));
    ASSERT_TRUE(window);
    EXPECT_STREQ("producer", window->getId());
    EXPECT_THAT(recorder().take(), ElementsAre("producer getKey", "producer create"));
}

TEST(DockWindowRegistry, AnEqualTextAtAnotherAddressIsUnknown)
{
    const DockWindowRegistryPrivate::Proxy proxy(new WindowProducer("producer"));
    const std::string sameText = key;
    EXPECT_EQ(nullptr, DockWindowRegistry::instance(false)->create(sameText.c_str()));
    EXPECT_EQ(nullptr, DockWindowRegistry::instance(false)->create(nullptr));
    EXPECT_THAT(recorder().take(), ElementsAre("producer getKey"));
}

TEST(DockWindowRegistry, OfTwoProducersUnderOnePointerTheLaterStays)
{
    const DockWindowRegistryPrivate::Proxy first(new WindowProducer("first"));
    recorder().take();
    const DockWindowRegistryPrivate::Proxy second(new WindowProducer("second"));
    EXPECT_THAT(recorder().take(), ElementsAre("second getKey", "~first"));
    const std::unique_ptr<DockWindow> window(DockWindowRegistry::instance(false)->create(key));
    EXPECT_STREQ("second", window->getId());
}

TEST(DockWindowRegistry, TheProducerOutlivesItsProxy)
{
    {
        const DockWindowRegistryPrivate::Proxy proxy(new WindowProducer("producer"));
        const DockWindowRegistryPrivate::Proxy copy(proxy);
    }
    EXPECT_THAT(recorder().take(), ElementsAre("producer getKey"));
    const std::unique_ptr<DockWindow> window(DockWindowRegistry::instance(false)->create(key));
    EXPECT_TRUE(window);
}

TEST(DockWindowRegistry, AProducerThatIsReplacedWhileItWorksLivesToTheEndOfIt)
{
    auto* producer = new WindowProducer("first");
    producer->inCreate = [] { const DockWindowRegistryPrivate::Proxy second(new WindowProducer("second")); };
    const DockWindowRegistryPrivate::Proxy proxy(producer);
    recorder().take();
    const std::unique_ptr<DockWindow> window(DockWindowRegistry::instance(false)->create(key));
    EXPECT_STREQ("first", window->getId());
    EXPECT_THAT(recorder().take(), ElementsAre("first create", "second getKey", "~first"));
}

TEST(DockWindowRegistry, IsMadeOnceAndErasedForGoodWithoutItsProducers)
{
    const DockWindowRegistryPrivate::Proxy proxy(new WindowProducer("producer"));
    ASSERT_NE(nullptr, DockWindowRegistry::instance(false));
    EXPECT_EQ(DockWindowRegistry::instance(false), DockWindowRegistry::instance(false));
    recorder().take();
    EXPECT_EQ(nullptr, DockWindowRegistry::instance(true));
    EXPECT_EQ(nullptr, DockWindowRegistry::instance(false));
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(DockWindowRegistry, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, vfTest::slotOf(&DockWindowRegistryPrivate::registryHook)); // behind the destructor
    EXPECT_EQ(-1, vfTest::slotOf(&DockWindowRegistry::create));
    EXPECT_EQ(sizeof(void*), sizeof(DockWindowRegistry));
}
