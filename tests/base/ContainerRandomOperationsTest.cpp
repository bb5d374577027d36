// SPDX-License-Identifier: MIT
// Long random sequences of operations, each made on a container here and on a standard one.
#include "support/Search.h"

#include <velaforge/base/List.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/Set.h>
#include <velaforge/base/Vector.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>

namespace {

class Dice
{
public:
    explicit Dice(unsigned seed) : m_engine(seed) {}

    /// @return 0 to limit - 1
    unsigned operator()(unsigned limit)
    {
        return std::uniform_int_distribution<unsigned>(0, limit - 1)(m_engine);
    }

private:
    std::mt19937 m_engine;
};

template <class Sequence, class Standard>
void expectSameSequence(const Sequence& ours, const Standard& standard, int round)
{
    ASSERT_EQ(standard.size(), ours.size()) << "round " << round;
    auto it = ours.getIterator();
    for (const int value : standard) {
        ASSERT_TRUE(it.hasNext());
        ASSERT_EQ(value, it.next()) << "round " << round;
    }
    ASSERT_FALSE(it.hasNext());
}

template <class Sequence>
void expectAgreement(unsigned seed)
{
    Dice dice(seed);
    Sequence ours;
    Sequence sharing = ours;
    std::vector<int> standard;
    for (int round = 0; round < 4000; ++round) {
        const int x = static_cast<int>(dice(20));
        const auto size = static_cast<unsigned>(standard.size());
        const unsigned at = size ? dice(size) : 0;
        Sequence& hand = dice(2) ? ours : sharing;
        switch (dice(size > 60 ? 16 : 13)) {
        case 0:
            hand.append(x);
            standard.push_back(x);
            break;
        case 1:
            hand.prepend(x);
            standard.insert(standard.begin(), x);
            break;
        case 2:
            hand << x;
            hand += x;
            standard.insert(standard.end(), 2, x);
            break;
        case 3:
            hand.insert(at, x);
            standard.insert(standard.begin() + at, x);
            break;
        case 4:
            if (size) {
                hand.replace(at, x);
                standard[at] = x;
            }
            break;
        case 5:
            ASSERT_EQ(std::count(standard.begin(), standard.end(), x), hand.count(x));
            ASSERT_EQ(hand.count(x) > 0, hand.contains(x));
            break;
        case 6: {
            const auto begin = standard.begin() + std::min(at, size);
            const auto found = std::find(begin, standard.end(), x);
            const unsigned expected =
                found == standard.end() ? Sequence::npos : static_cast<unsigned>(found - standard.begin());
            ASSERT_EQ(expected, hand.indexOf(x, at));
            break;
        }
        case 7: {
            unsigned expected = Sequence::npos;
            for (unsigned i = 0; i < size && i <= at; ++i) {
                if (standard[i] == x)
                    expected = i;
            }
            ASSERT_EQ(expected, hand.lastIndexOf(x, at));
            break;
        }
        case 8: {
            const unsigned length = dice(6);
            const unsigned end = std::min(size, at + length);
            const std::vector<int> part(standard.begin() + at, standard.begin() + end);
            expectSameSequence(hand.mid(at, length), part, round);
            break;
        }
        case 9: {
            Sequence more;
            more << x << x + 1;
            hand << more;
            standard.push_back(x);
            standard.push_back(x + 1);
            break;
        }
        case 10:
            if (size) {
                ASSERT_EQ(standard[at], hand.takeAt(at));
                standard.erase(standard.begin() + at);
            }
            break;
        case 11: {
            Sequence other;
            other << x;
            hand.swap(other);
            hand << other;
            standard.insert(standard.begin(), x);
            break;
        }
        case 12: {
            Sequence copy;
            copy = hand;
            copy << x;
            hand = copy;
            standard.push_back(x);
            break;
        }
        case 13:
            hand.remove(at);
            standard.erase(standard.begin() + at);
            break;
        case 14:
            hand.removeFirst();
            hand.removeLast();
            standard.erase(standard.begin());
            standard.pop_back();
            break;
        default:
            hand.clear();
            standard.clear();
        }
        expectSameSequence(ours, standard, round);
        expectSameSequence(sharing, standard, round);
    }
}

void expectAgreementOfMoves(unsigned seed)
{
    Dice dice(seed);
    vfBase::List<int> ours;
    std::vector<int> standard;
    for (int i = 0; i < 12; ++i) {
        ours << i % 5;
        standard.push_back(i % 5);
    }
    for (int round = 0; round < 3000; ++round) {
        const auto size = static_cast<unsigned>(standard.size());
        const unsigned a = dice(size);
        const unsigned b = dice(size + 1);
        const int x = static_cast<int>(dice(5));
        switch (dice(4)) {
        case 0: {
            ours.move(a, b);
            const int value = standard[a];
            standard.insert(standard.begin() + b, value);
            standard.erase(standard.begin() + (b <= a ? a + 1 : a));
            break;
        }
        case 1:
            ours.swap(a, dice(size)); // and back, so that the copy needs no second throw
            standard.assign(ours.asStdList().begin(), ours.asStdList().end());
            break;
        case 2: {
            const auto found = std::find(standard.begin(), standard.end(), x);
            ASSERT_EQ(found != standard.end(), ours.removeOne(x));
            if (found != standard.end())
                standard.erase(found);
            break;
        }
        default: {
            const auto removed = std::count(standard.begin(), standard.end(), x);
            ASSERT_EQ(removed, ours.removeAll(x));
            standard.erase(std::remove(standard.begin(), standard.end(), x), standard.end());
        }
        }
        while (standard.size() < 8) {
            const int added = static_cast<int>(dice(5));
            ours << added;
            standard.push_back(added);
        }
        expectSameSequence(ours, standard, round);
    }
}

void expectAgreementOfSets(unsigned seed)
{
    Dice dice(seed);
    vfBase::Set<int> ours;
    std::set<int> standard;
    for (int round = 0; round < 6000; ++round) {
        const int x = static_cast<int>(dice(40));
        vfBase::Set<int> other;
        std::set<int> otherStandard;
        for (unsigned i = dice(12); i > 0; --i) {
            const int y = static_cast<int>(dice(40));
            other << y;
            otherStandard.insert(y);
        }
        std::set<int> result;
        const auto into = std::inserter(result, result.end());
        const auto range = [&](auto algorithm) {
            algorithm(standard.begin(), standard.end(), otherStandard.begin(), otherStandard.end(), into);
            standard = result;
        };
        switch (dice(8)) {
        case 0:
            ours.insert(x);
            standard.insert(x);
            break;
        case 1:
            ASSERT_EQ(standard.erase(x) > 0, ours.remove(x));
            break;
        case 2:
            ours |= other;
            range([](auto... r) { std::set_union(r...); });
            break;
        case 3:
            ours &= other;
            range([](auto... r) { std::set_intersection(r...); });
            break;
        case 4:
            ours -= other;
            range([](auto... r) { std::set_difference(r...); });
            break;
        case 5:
            ours += other;
            standard.insert(otherStandard.begin(), otherStandard.end());
            break;
        case 6:
            ASSERT_EQ(
                std::includes(standard.begin(), standard.end(), otherStandard.begin(), otherStandard.end()),
                ours.contains(other));
            break;
        default:
            ASSERT_EQ(standard.count(x) > 0, ours.contains(x));
            ASSERT_EQ(standard.count(x) > 0, ours.find(x).isValid());
        }
        expectSameSequence(ours, standard, round);
    }
}

void expectAgreementOfMaps(unsigned seed)
{
    Dice dice(seed);
    vfBase::Map<int, int> ours;
    std::map<int, int> standard;
    for (int round = 0; round < 8000; ++round) {
        const int key = static_cast<int>(dice(40));
        const int value = static_cast<int>(dice(10));
        switch (dice(8)) {
        case 0:
            ours.insert(key, value);
            standard.emplace(key, value);
            break;
        case 1:
            ours[key] = value;
            standard[key] = value;
            break;
        case 2:
            ASSERT_EQ(standard.erase(key) > 0, ours.remove(key));
            break;
        case 3: {
            const auto found = standard.find(key);
            ASSERT_EQ(found == standard.end() ? 0 : found->second, ours.take(key));
            standard.erase(key);
            break;
        }
        case 4: {
            const auto bound = standard.lower_bound(key);
            ASSERT_EQ(bound != standard.end(), ours.lowerBound(key).isValid());
            if (bound != standard.end()) {
                ASSERT_EQ(bound->first, ours.lowerBound(key).key());
            }
            break;
        }
        case 5: {
            const auto bound = standard.upper_bound(key);
            ASSERT_EQ(bound != standard.end(), ours.upperBound(key).isValid());
            break;
        }
        case 6: {
            vfBase::Map<int, int> other;
            for (unsigned i = dice(6); i > 0; --i) {
                const int k = static_cast<int>(dice(40));
                const int v = static_cast<int>(dice(10));
                if (other.contains(k))
                    continue;
                other.insert(k, v);
                const auto [at, isNew] = standard.emplace(k, v);
                if (!isNew)
                    at->second = std::min(at->second, v);
            }
            ours.unite(other);
            break;
        }
        default:
            ASSERT_EQ(standard.count(key), ours.count(key));
            ASSERT_EQ(standard.count(key) ? standard[key] : -1, ours.value(key, -1));
        }
        ASSERT_TRUE(standard == ours.asStdMap()) << "round " << round;
    }
}

/// Makes the operations again and again, each time by other chances.
void expectForManySeeds(void (*expect)(unsigned seed), int rounds)
{
    vfTest::Search search("sequences of operations on containers", rounds);
    while (search.next())
        expect(search.seed());
}

} // namespace

TEST(ContainerRandomOperations, AVectorAgreesWithAStandardOne)
{
    expectForManySeeds(expectAgreement<vfBase::Vector<int>>, 3);
}

TEST(ContainerRandomOperations, AListAgreesWithAStandardVector)
{
    expectForManySeeds(expectAgreement<vfBase::List<int>>, 3);
}

TEST(ContainerRandomOperations, AListMovesRemovesAndSwapsLikeAStandardVector)
{
    expectForManySeeds(expectAgreementOfMoves, 2);
}

TEST(ContainerRandomOperations, ASetAgreesWithAStandardOne)
{
    expectForManySeeds(expectAgreementOfSets, 2);
}

TEST(ContainerRandomOperations, AMapAgreesWithAStandardOne)
{
    expectForManySeeds(expectAgreementOfMaps, 2);
}
