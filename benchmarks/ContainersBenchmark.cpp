// SPDX-License-Identifier: MIT
// What a shared container costs beside the standard one inside it, and beside another library's.
#include <velaforge/base/AssociativeIterator.h>
#include <velaforge/base/List.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/Pair.h>
#include <velaforge/base/Set.h>
#include <velaforge/base/Vector.h>
#include <velaforge/base/VfString.h>

#include <QList>
#include <QMap>
#include <QString>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <list>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int elementCount = 10000;

/// Sequences hold pointers to such things.
struct Item
{
    int weight;
};

std::vector<Item*> makeElements(Item**)
{
    static std::vector<Item> items(elementCount, Item{3});
    std::vector<Item*> pointers;
    pointers.reserve(items.size());
    for (Item& item : items)
        pointers.push_back(&item);
    return pointers;
}

/// Sets and maps hold names, in no order.
template <class String>
std::vector<String> makeElements(String*)
{
    std::vector<String> names;
    unsigned int number = 1;
    for (int i = 0; i < elementCount; ++i) {
        number = number * 1664525u + 1013904223u;
        names.emplace_back(("part " + std::to_string(number)).c_str());
    }
    return names;
}

template <class T>
const std::vector<T>& elements()
{
    static const std::vector<T> all = makeElements(static_cast<T*>(nullptr));
    return all;
}

// One way to put an element into each kind of container.
template <class T>
void put(vfBase::Vector<T>& container, const T& x)
{
    container.append(x);
}
template <class T>
void put(vfBase::List<T>& container, const T& x)
{
    container.append(x);
}
template <class Sequence, class T>
auto put(Sequence& container, const T& x) -> decltype(container.push_back(x))
{
    container.push_back(x);
}
template <class T>
void put(vfBase::Set<T>& container, const T& x)
{
    container << x;
}
template <class T>
void put(std::set<T>& container, const T& x)
{
    container.insert(x);
}
template <class Map, class K>
auto put(Map& container, const K& key) -> decltype(container[key] = 1, void())
{
    container[key] = 1;
}

// One way to find an element in each kind of container.
template <class T>
bool has(const vfBase::List<T>& container, const T& x)
{
    return container.contains(x);
}
template <class T>
bool has(const std::list<T>& container, const T& x)
{
    return std::find(container.begin(), container.end(), x) != container.end();
}
template <class T>
bool has(const vfBase::Set<T>& container, const T& x)
{
    return container.contains(x);
}
template <class T>
bool has(const std::set<T>& container, const T& x)
{
    return container.find(x) != container.end();
}
template <class Map, class K>
auto has(const Map& container, const K& key) -> decltype(container.value(key, 0) == 1)
{
    return container.value(key, 0) == 1;
}
template <class K>
bool has(const std::map<K, int>& container, const K& key)
{
    const auto found = container.find(key);
    return (found == container.end() ? 0 : found->second) == 1;
}

// What is read of an element in passing.
int read(const Item* item)
{
    return item->weight;
}
int read(const vfBase::VfString& text)
{
    return *text.c_str();
}
template <class K>
int read(const std::pair<const K, int>& entry)
{
    return entry.second;
}
template <class K>
int read(const vfBase::Pair<K, int>& entry)
{
    return entry.value;
}
int read(int value)
{
    return value;
}

/// The container counts as known elsewhere, as one that belongs to an object is: nothing of it stays in registers.
template <class Container, class T>
void append(benchmark::State& state)
{
    for (auto _ : state) {
        Container container;
        benchmark::DoNotOptimize(&container);
        for (const T& x : elements<T>())
            put(container, x);
        benchmark::DoNotOptimize(container.size());
    }
}

template <class Container>
void iterate(benchmark::State& state, Container& container)
{
    for (auto _ : state) {
        long sum = 0;
        for (const auto& element : container)
            sum += read(element);
        benchmark::DoNotOptimize(sum);
    }
}

template <class Container>
void iterateByCursor(benchmark::State& state, const Container& container)
{
    for (auto _ : state) {
        long sum = 0;
        for (auto it = container.getIterator(); it.hasNext();)
            sum += read(it.next());
        benchmark::DoNotOptimize(sum);
    }
}

template <class T, class Container>
void lookUp(benchmark::State& state, const Container& container)
{
    // A list is walked for each, so that a few must do.
    const std::size_t step = std::is_same_v<T, Item*> ? elementCount / 20 : 1;
    for (auto _ : state) {
        int found = 0;
        for (std::size_t i = 0; i < elements<T>().size(); i += step)
            found += has(container, elements<T>()[i]);
        benchmark::DoNotOptimize(found);
    }
}

template <class Sequence>
void lookUpByIndex(benchmark::State& state, const Sequence& container)
{
    unsigned int number = 1;
    for (auto _ : state) {
        long sum = 0;
        for (int i = 0; i < elementCount; ++i) {
            number = number * 1664525u + 1013904223u;
            sum += read(container[(number >> 8) % elementCount]);
        }
        benchmark::DoNotOptimize(sum);
    }
}

template <class Container, class T>
const Container& filled()
{
    static Container container;
    if (container.size() == 0) {
        for (const T& x : elements<T>())
            put(container, x);
    }
    return container;
}

/// The standard container inside: the same elements at the same places in memory. Not const, as through the handle:
/// the const way through a tree is another function.
template <class Ours, class T>
typename Ours::Container& inside()
{
    return *filled<Ours, T>().getImp()->container;
}

template <class Run>
void add(const std::string& name, Run run)
{
    benchmark::RegisterBenchmark(name.c_str(), run);
}

template <class Ours, class T>
void compareWithStandard(const std::string& kind)
{
    add(kind + " append/ours", append<Ours, T>);
    add(kind + " append/std", append<typename Ours::Container, T>);
    add(kind + " iterate/ours", [](auto& state) { iterate(state, filled<Ours, T>()); });
    add(kind + " iterate/std", [](auto& state) { iterate(state, inside<Ours, T>()); });
    add(kind + " iterate by cursor/ours", [](auto& state) { iterateByCursor(state, filled<Ours, T>()); });
    add(kind + " iterate by cursor/std", [](auto& state) { iterate(state, inside<Ours, T>()); });
}

template <class Ours, class T>
void compareLookUp(const std::string& kind)
{
    add(kind + " look up/ours", [](auto& state) { lookUp<T>(state, filled<Ours, T>()); });
    add(kind + " look up/std", [](auto& state) { lookUp<T>(state, inside<Ours, T>()); });
}

using Vector = vfBase::Vector<Item*>;
using List = vfBase::List<Item*>;
using Set = vfBase::Set<vfBase::VfString>;
using Map = vfBase::Map<vfBase::VfString, int>;

void addAll()
{
    compareWithStandard<Vector, Item*>("Vector");
    add("Vector look up/ours", [](auto& state) { lookUpByIndex(state, filled<Vector, Item*>()); });
    add("Vector look up/std", [](auto& state) { lookUpByIndex(state, inside<Vector, Item*>()); });
    compareWithStandard<List, Item*>("List");
    compareLookUp<List, Item*>("List");
    compareWithStandard<Set, vfBase::VfString>("Set");
    compareLookUp<Set, vfBase::VfString>("Set");
    compareWithStandard<Map, vfBase::VfString>("Map");
    compareLookUp<Map, vfBase::VfString>("Map");

    // Qt's containers, for comparison.
    using QtList = QList<Item*>;
    using QtMap = QMap<QString, int>;
    add("Vector append/Qt", append<QtList, Item*>);
    add("Vector iterate/Qt", [](auto& state) { iterate(state, filled<QtList, Item*>()); });
    add("Vector look up/Qt", [](auto& state) { lookUpByIndex(state, filled<QtList, Item*>()); });
    add("Map append/Qt", append<QtMap, QString>);
    add("Map iterate/Qt", [](auto& state) { iterate(state, filled<QtMap, QString>()); });
    add("Map look up/Qt", [](auto& state) { lookUp<QString>(state, filled<QtMap, QString>()); });
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    addAll();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
