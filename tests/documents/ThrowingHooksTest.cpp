// SPDX-License-Identifier: MIT
// Documents, views and a manager whose hooks throw by chance, over long sequences of operations.
#include "support/RecordingApplication.h"
#include "support/Search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>

using vfApplication::Document;
using vfApplication::View;
using vfBase::Options;
using vfTest::recorder;
using vfTest::RecordingApplication;
using vfTest::RecordingDocument;

namespace {

/// An application whose hooks throw, one time in ten, and operations on it.
class Weather
{
public:
    explicit Weather(unsigned int seed) : m_random(seed)
    {
        vfTest::makeTemplate(m_bench.manager);
        recorder().onLine = [this](const std::string& line) {
            // What is made and destroyed throws nothing, and is counted.
            if (line[0] == '~')
                m_alive -= line.compare(0, 4, "~doc") == 0;
            else if (line.size() > 5 && line.compare(line.size() - 5, 5, " made") == 0)
                m_alive += line.compare(0, 3, "doc") == 0;
            else if (m_throws && m_random() % 10 == 0)
                throw std::runtime_error("a hook threw");
        };
    }
    ~Weather() { recorder().onLine = nullptr; }

    Weather(const Weather&) = delete;
    Weather& operator=(const Weather&) = delete;

    void operate()
    {
        m_throws = true;
        try {
            operateOnce();
        } catch (const std::exception&) {
            ++thrown;
        }
        m_throws = false;
        recorder().take();
        // Each document of the list is there, once, and knows its manager.
        auto documents = list();
        std::sort(documents.begin(), documents.end());
        EXPECT_EQ(documents.end(), std::adjacent_find(documents.begin(), documents.end()));
        EXPECT_LE(static_cast<int>(documents.size()), m_alive);
        for (const Document* document : documents)
            EXPECT_EQ(&m_bench.manager, document->getDocumentManager());
    }

    /// Closes everything in calm weather.
    void end()
    {
        for (Document* document : list())
            document->modify(false);
        EXPECT_TRUE(m_bench.manager.closeDocuments(true));
        EXPECT_TRUE(list().empty());
        EXPECT_EQ(0, m_alive) << "documents are left that no list knows";
    }

    int thrown = 0;

private:
    std::vector<Document*> list() const
    {
        std::vector<Document*> documents;
        for (Document* document : m_bench.manager.getDocumentList())
            documents.push_back(document);
        return documents;
    }

    void operateOnce()
    {
        auto& manager = m_bench.manager;
        const auto documents = list();
        Document* document = documents.empty() ? nullptr : documents[m_random() % documents.size()];
        const unsigned int choice = m_random() % 12;
        if (choice < 3 || !document) {
            const std::string path = "/file" + std::to_string(m_random() % 6) + ".rec";
            manager.createDocument(choice == 0 ? "" : path.c_str(), Options());
            return;
        }
        View* view = document->getFirstView();
        switch (choice) {
        case 3:
            manager.closeDocument(document, m_random() % 2);
            break;
        case 4:
            document->close();
            break;
        case 5:
            document->modify(m_random() % 2);
            break;
        case 6:
            document->save(Options());
            break;
        case 7:
            manager.savePath = "/other.rec";
            document->saveAs(Options());
            break;
        case 8:
            manager.createView(document, Options());
            break;
        case 9:
            if (view)
                manager.activateView(view, m_random() % 2);
            break;
        case 10:
            document->updateAllViews(nullptr);
            break;
        default:
            if (m_random() % 4 == 0)
                manager.closeDocuments(m_random() % 2);
            else
                document->revert();
        }
    }

    RecordingApplication m_bench;
    std::mt19937 m_random;
    bool m_throws = false;
    int m_alive = 0;
};

} // namespace

TEST(ThrowingHooks, LeaveEachDocumentEitherListedOrGone)
{
    vfTest::Search search("sequences of hooks that throw", 3);
    int thrown = 0;
    while (search.next()) {
        Weather weather(search.seed());
        for (int i = 0; i < 100 && !HasFailure(); ++i)
            weather.operate();
        weather.end();
        thrown += weather.thrown;
    }
    EXPECT_GT(thrown, 0);
}
