// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <osg/Array>
#include <osg/Callback>
#include <osg/Image>
#include <osg/Matrixd>
#include <osg/Matrixf>
#include <osg/Node>
#include <osg/Plane>
#include <osg/PrimitiveSet>
#include <osg/Quat>
#include <osg/StateAttribute>
#include <osg/StateSet>
#include <osg/ref_ptr>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

namespace vfFormats {

/// The objects of one class that have arrived, in the order of their numbers. While a scene is checked, a prototype stands in
/// the place of each, which is of the same class.
template <class T>
using FlatObjects = std::vector<osg::ref_ptr<T>>;

/// Of which of the numbered classes an object is.
template <class T>
using FlatBase = std::conditional_t<
    std::is_base_of_v<osg::Image, T>, osg::Image,
    std::conditional_t<
        std::is_base_of_v<osg::BufferData, T>, osg::BufferData,
        std::conditional_t<std::is_base_of_v<osg::StateAttribute, T>, osg::StateAttribute,
                           std::conditional_t<std::is_base_of_v<osg::StateSet, T>, osg::StateSet,
                                              std::conditional_t<std::is_base_of_v<osg::Callback, T>,
                                                                 osg::Callback, osg::Node>>>>>;

/// Returns an object as one of a class derived from its own, and null for one of another class.
template <class T, class Base>
T* flatCast(Base* object)
{
    if constexpr (std::is_same_v<T, Base>)
        return object;
    else if constexpr (std::is_same_v<T, osg::Array>)
        return object ? object->asArray() : nullptr;
    else if constexpr (std::is_same_v<T, osg::PrimitiveSet>)
        return object ? object->asPrimitiveSet() : nullptr;
    else
        return dynamic_cast<T*>(object);
}

/// Finds the record of an object's class in a list of them; the size of the list when it is not there.
template <class Records, class Object>
std::size_t findKind(const Records& records, const Object& object)
{
    const std::type_info& type = typeid(object);
    std::size_t number = 0;
    while (number < records.size() && records[number].type != &type)
        ++number;
    if (number < records.size())
        return number;
    // A class may be described once in each library.
    number = 0;
    while (number < records.size() && *records[number].type != type)
        ++number;
    return number;
}

/// How far the nodes below a node reach.
struct FlatExtent
{
    std::uint32_t depth = 1;
    std::uint64_t visits = 1; ///< of a walk that enters what is shared once for each way to it
};

/// What objects refer to, in a scene that arrives.
struct FlatTables
{
    std::vector<std::string> texts;
    FlatObjects<osg::BufferData> blocks;
    FlatObjects<osg::Image> images;
    FlatObjects<osg::StateAttribute> attributes;
    FlatObjects<osg::StateSet> states;
    FlatObjects<osg::Callback> callbacks;
    FlatObjects<osg::Node> nodes;
    std::vector<FlatExtent> extents; ///< of the nodes, while they are checked

    auto& of(const osg::BufferData*) { return blocks; }
    auto& of(const osg::Image*) { return images; }
    auto& of(const osg::StateAttribute*) { return attributes; }
    auto& of(const osg::StateSet*) { return states; }
    auto& of(const osg::Callback*) { return callbacks; }
    auto& of(const osg::Node*) { return nodes; }
};

/// Gives numbers to what objects refer to, in a scene that is sent; 0 stands for none.
class VFFORMATS_EXPORT FlatNumbers
{
public:
    virtual std::uint32_t numberOf(const std::string& text) = 0;
    virtual std::uint32_t numberOf(const osg::BufferData* block) = 0;
    virtual std::uint32_t numberOf(const osg::Image* image) = 0;
    virtual std::uint32_t numberOf(const osg::StateAttribute* attribute) = 0;
    virtual std::uint32_t numberOf(const osg::StateSet* state) = 0;
    virtual std::uint32_t numberOf(const osg::Callback* callback) = 0;
    virtual std::uint32_t numberOf(const osg::Node* node) = 0;

protected:
    ~FlatNumbers() = default;
};

/// The numbers that a field may have.
template <std::size_t size>
using FlatChoices = std::array<std::uint32_t, size>;

/// Writes the fields of an object as 32-bit words, checks words that arrive, or sets the fields from them: one function for
/// each class names its fields, and the same function does all three.
///
///     void exchange(FlatFields& fields, osg::ShadeModel& shading)
///     {
///         fields.choice(shading, &osg::ShadeModel::getMode, &osg::ShadeModel::setMode, FlatChoices<2>{GL_FLAT, GL_SMOOTH});
///     }
///
/// Words are checked before the first object is made of them. A field that is not as it should be makes all that follows
/// fail, and nothing is set from there on.
class VFFORMATS_EXPORT FlatFields
{
public:
    /// Writes, to the end of the words.
    FlatFields(std::vector<std::uint32_t>& words, FlatNumbers& numbers) : m_out(&words), m_numbers(&numbers)
    {}

    /// Checks, or makes.
    /// @param words  must live as long
    FlatFields(const std::uint32_t* words, std::size_t count, FlatTables& tables, bool isMaking)
        : m_at(words), m_end(words + count), m_tables(&tables), m_isMaking(isMaking)
    {}

    bool isWriting() const { return m_out != nullptr; }
    bool isMaking() const { return m_isMaking; }

    /// Returns whether every field so far was as it should be.
    bool isGood() const { return m_isGood; }

    /// Refuses what follows.
    void fail() { m_isGood = false; }

    /// Returns whether all words were taken.
    bool isAtEnd() const { return m_at == m_end; }

    /// Returns whether a field was written other than it was, because it could not be taken so.
    bool isCorrected() const { return m_isCorrected; }

    /// A number, a vector, a matrix or a text. Numbers that are not finite are none.
    template <class Object, class Get, class Set>
    void value(Object& object, Get get, Set set)
    {
        using Value = std::decay_t<std::invoke_result_t<Get, Object&>>;
        if (isWriting()) {
            put(Value(std::invoke(get, object)));
            return;
        }
        Value taken = Value();
        if (take(taken) && m_isMaking)
            std::invoke(set, object, taken);
    }

    /// A field of a few numbers, of which the first is written for one that is not among them.
    template <class Object, class Get, class Set, std::size_t size>
    void choice(Object& object, Get get, Set set, const FlatChoices<size>& allowed)
    {
        using Value = std::decay_t<std::invoke_result_t<Get, Object&>>;
        const auto isAllowed = [&allowed](std::uint32_t word) {
            return std::find(allowed.begin(), allowed.end(), word) != allowed.end();
        };
        if (isWriting()) {
            const auto word = static_cast<std::uint32_t>(std::invoke(get, object));
            m_isCorrected = m_isCorrected || !isAllowed(word);
            put(isAllowed(word) ? word : allowed.front());
            return;
        }
        std::uint32_t word = 0;
        if (take(word) && require(isAllowed(word)) && m_isMaking)
            std::invoke(set, object, static_cast<Value>(word));
    }

    /// A whole number from @p least to @p most. The nearest of them is written for another one.
    template <class Object, class Get, class Set>
    void range(Object& object, Get get, Set set, std::int64_t least, std::int64_t most)
    {
        using Value = std::decay_t<std::invoke_result_t<Get, Object&>>;
        if (isWriting()) {
            const auto number = static_cast<std::int64_t>(std::invoke(get, object));
            const std::int64_t nearest = std::clamp(number, least, most);
            m_isCorrected = m_isCorrected || nearest != number;
            put(static_cast<std::uint32_t>(nearest));
            return;
        }
        std::uint32_t word = 0;
        if (!take(word))
            return;
        const std::int64_t number =
            least < 0 ? std::int64_t(static_cast<std::int32_t>(word)) : std::int64_t(word);
        if (require(number >= least && number <= most) && m_isMaking)
            std::invoke(set, object, static_cast<Value>(number));
    }

    /// An object of class T or null; or one of class T only.
    template <class T, class Object, class Get, class Set>
    void reference(Object& object, Get get, Set set)
    {
        refer<T>(object, get, set, true);
    }
    template <class T, class Object, class Get, class Set>
    void member(Object& object, Get get, Set set)
    {
        refer<T>(object, get, set, false);
    }

    /// Does @p item, which takes at least one word, for each number below that of a list.
    /// @param size  of the list that is written
    template <class Item>
    void list(std::size_t size, Item item, std::size_t most = ~std::size_t(0))
    {
        const std::size_t items = count(size, most);
        for (std::size_t i = 0; i < items && m_isGood; ++i)
            item(static_cast<unsigned int>(i));
    }

    /// The number of items in a list.
    std::size_t count(std::size_t size, std::size_t most = ~std::size_t(0))
    {
        if (isWriting()) {
            const std::size_t written = std::min(size, most);
            m_isCorrected = m_isCorrected || written != size;
            put(static_cast<std::uint32_t>(written));
            return written;
        }
        std::uint32_t word = 0;
        return take(word) && require(word <= most && word <= static_cast<std::size_t>(m_end - m_at)) ? word
                                                                                                     : 0;
    }

    /// Puts a value by itself, or takes it.
    template <class Value>
    void plain(Value& value)
    {
        if (isWriting())
            put(value);
        else
            take(value);
    }

    /// How far what lies below the node reaches whose references were checked last; forgets it.
    FlatExtent takeExtent()
    {
        const FlatExtent extent = m_extent;
        m_extent = FlatExtent();
        return extent;
    }

    bool require(bool isRight)
    {
        m_isGood = m_isGood && isRight;
        return m_isGood;
    }

private:
    template <class T, class Object, class Get, class Set>
    void refer(Object& object, Get get, Set set, bool mayBeNull)
    {
        using Base = FlatBase<T>;
        if (isWriting()) {
            put(m_numbers->numberOf(static_cast<const Base*>(std::invoke(get, object))));
            return;
        }
        std::uint32_t number = 0;
        auto& table = m_tables->of(static_cast<const Base*>(nullptr));
        if (!take(number) || !require(number <= table.size() && (mayBeNull || number > 0)))
            return;
        T* found = number > 0 ? flatCast<T>(table[number - 1].get()) : nullptr;
        if (!require(found || number == 0))
            return;
        if (m_isMaking)
            std::invoke(set, object, found);
        else if (std::is_same_v<Base, osg::Node> && number > 0)
            add(m_tables->extents[number - 1]);
    }

    void add(const FlatExtent& below)
    {
        constexpr std::uint64_t most = std::uint64_t(1) << 60;
        m_extent.depth = std::max(m_extent.depth, below.depth + 1);
        m_extent.visits = std::min(m_extent.visits + below.visits, most);
    }

    void put(std::uint32_t word) { m_out->push_back(word); }
    void put(std::int32_t number) { put(static_cast<std::uint32_t>(number)); }
    void put(std::uint16_t number) { put(static_cast<std::uint32_t>(number)); }
    void put(bool is) { put(static_cast<std::uint32_t>(is)); }
    void put(float number) { putReal(number); }
    void put(double number) { putReal(number); }
    void put(const std::string& text) { put(m_numbers->numberOf(text)); }
    void put(const osg::Matrixd& matrix) { putAll(matrix.ptr(), 16); }
    void put(const osg::Matrixf& matrix) { putAll(matrix.ptr(), 16); }
    void put(const osg::Plane& plane) { putAll(plane.ptr(), 4); }
    void put(const osg::Quat& turn) { putAll(turn._v, 4); }
    template <class Vector, class = typename Vector::value_type>
    void put(const Vector& vector)
    {
        putAll(vector.ptr(), Vector::num_components);
    }

    template <class Number>
    void putAll(const Number* numbers, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i)
            put(numbers[i]);
    }

    template <class Number>
    void putReal(Number number)
    {
        if (!std::isfinite(number)) {
            m_isCorrected = true;
            number = 0;
        }
        std::uint32_t words[sizeof(Number) / 4];
        std::memcpy(words, &number, sizeof(number));
        m_out->insert(m_out->end(), std::begin(words), std::end(words));
    }

    bool take(std::uint32_t& word)
    {
        if (!require(m_at != m_end))
            return false;
        word = *m_at++;
        return true;
    }
    bool take(std::int32_t& number)
    {
        std::uint32_t word = 0;
        const bool isTaken = take(word);
        number = static_cast<std::int32_t>(word);
        return isTaken;
    }
    bool take(std::uint16_t& number)
    {
        std::uint32_t word = 0;
        const bool isTaken = take(word) && require(word <= 0xffff);
        number = static_cast<std::uint16_t>(word);
        return isTaken;
    }
    bool take(bool& is)
    {
        std::uint32_t word = 0;
        const bool isTaken = take(word) && require(word <= 1);
        is = word == 1;
        return isTaken;
    }
    bool take(float& number) { return takeReal(number); }
    bool take(double& number) { return takeReal(number); }
    bool take(std::string& text)
    {
        std::uint32_t number = 0;
        if (!take(number) || !require(number < m_tables->texts.size()))
            return false;
        if (m_isMaking)
            text = m_tables->texts[number];
        return true;
    }
    bool take(osg::Matrixd& matrix) { return takeAll(matrix.ptr(), 16); }
    bool take(osg::Matrixf& matrix) { return takeAll(matrix.ptr(), 16); }
    bool take(osg::Plane& plane)
    {
        double numbers[4] = {};
        const bool isTaken = takeAll(numbers, 4);
        plane.set(numbers[0], numbers[1], numbers[2], numbers[3]);
        return isTaken;
    }
    bool take(osg::Quat& turn) { return takeAll(turn._v, 4); }
    template <class Vector, class = typename Vector::value_type>
    bool take(Vector& vector)
    {
        return takeAll(vector.ptr(), Vector::num_components);
    }

    template <class Number>
    bool takeAll(Number* numbers, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            if (!take(numbers[i]))
                return false;
        }
        return true;
    }

    template <class Number>
    bool takeReal(Number& number)
    {
        constexpr std::size_t words = sizeof(Number) / 4;
        if (!require(static_cast<std::size_t>(m_end - m_at) >= words))
            return false;
        std::memcpy(&number, m_at, sizeof(number));
        m_at += words;
        return require(std::isfinite(number));
    }

    std::vector<std::uint32_t>* m_out = nullptr;
    FlatNumbers* m_numbers = nullptr;
    const std::uint32_t* m_at = nullptr;
    const std::uint32_t* m_end = nullptr;
    FlatTables* m_tables = nullptr;
    FlatExtent m_extent;
    bool m_isMaking = false;
    bool m_isGood = true;
    bool m_isCorrected = false;
};

} // namespace vfFormats
