// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/FlatScene.h>

#include <velaforge/formats/internal/FlatArrays.h>
#include <velaforge/formats/internal/FlatKinds.h>
#include <velaforge/formats/internal/TransferBytes.h>

#include <osg/Geometry>
#include <osg/MatrixTransform>
#include <osg/ShapeDrawable>

#include <set>
#include <unordered_map>
#include <utility>

namespace vfFormats {

namespace {

constexpr std::uint32_t longestCallbackChain = 100;

/// Writes the lists. What a record refers to is written before it: the records that are not finished lie one behind the other
/// in m_open, the inmost last.
class Flattener : private FlatNumbers
{
public:
    Flattener(FlatScene& flat, bool (*canSend)(const osg::Image&), SceneSharing sharing)
        : m_flat(flat), m_canSend(canSend), m_sharing(sharing)
    {
        numberOf(std::string()); // the text of those that have none is 0
    }

    void run(const osg::Node& scene)
    {
        numberOf(&scene);
        for (const std::string& kind : m_leftOut)
            m_flat.warnings.push_back(kind + " is left out");
        if (m_isCorrected)
            m_flat.warnings.emplace_back("numbers that mean nothing are replaced");
    }

private:
    std::uint32_t numberOf(const std::string& text) override
    {
        const auto [entry, isNew] =
            m_texts.emplace(text.size() > longestText ? text.substr(0, longestText) : text,
                            static_cast<std::uint32_t>(m_flat.texts.size()));
        if (isNew)
            m_flat.texts.push_back(entry->first);
        return entry->second;
    }

    std::uint32_t numberOf(const osg::BufferData* block) override
    {
        if (!block || flatKindOf(*block) == flatArrays().size())
            return leaveOut(block);
        constexpr GLenum lastMode = 0x0d; // triangle strips with adjacency
        const auto* primitives = dynamic_cast<const osg::PrimitiveSet*>(block);
        if (primitives && primitives->getMode() > lastMode)
            return leaveOut(block);
        if (const std::uint32_t number = known(block))
            return number;
        const bool isOne = isHeldOnce(*block);
        m_flat.arrays.push_back({block, numberOf(block->getName())});
        const auto number = static_cast<std::uint32_t>(m_flat.arrays.size());
        if (!isOne)
            m_numbers.emplace(block, number);
        return number;
    }

    std::uint32_t numberOf(const osg::Image* image) override
    {
        if (!image || !image->data())
            return 0;
        const auto [entry, isNew] =
            m_numbers.emplace(image, static_cast<std::uint32_t>(m_flat.images.size() + 1));
        if (isNew && m_canSend(*image)) {
            m_flat.images.push_back({image, numberOf(image->getName()), numberOf(image->getFileName())});
        } else if (isNew) {
            entry->second = 0;
            m_leftOut.insert("an image that is too large, or of an unusual kind,");
        }
        return entry->second;
    }

    std::uint32_t numberOf(const osg::StateAttribute* attribute) override
    {
        return record(attribute, FlatList::Attributes, flatAttributes());
    }

    std::uint32_t numberOf(const osg::StateSet* state) override
    {
        if (!state)
            return 0;
        if (const std::uint32_t number = known(state))
            return number;
        noteStrangers(*state);
        return write(state, FlatList::States,
                     [state](FlatFields& fields) { exchange(fields, const_cast<osg::StateSet&>(*state)); });
    }

    std::uint32_t numberOf(const osg::Callback* callback) override
    {
        while (callback && flatKindOf(*callback) == flatCallbacks().size()) {
            leaveOut(callback);
            callback = callback->getNestedCallback();
        }
        return record(callback, FlatList::Callbacks, flatCallbacks());
    }

    std::uint32_t numberOf(const osg::Node* node) override
    {
        if (!node || flatKindOf(*node) < flatNodes().size())
            return record(node, FlatList::Nodes, flatNodes());
        if (const std::uint32_t number = known(node))
            return number;
        const osg::ref_ptr<osg::Node> other = standIn(*node);
        const std::uint32_t number = record(other.get(), FlatList::Nodes, flatNodes());
        m_numbers.erase(other.get()); // whose address may soon be that of another one
        m_numbers.emplace(node, number);
        return number;
    }

    template <class Base>
    std::uint32_t record(const Base* object, FlatList list, const FlatKinds<Base>& kinds)
    {
        if (!object)
            return 0;
        if (const std::uint32_t number = known(object))
            return number;
        const std::size_t kind = flatKindOf(*object);
        if (kind == kinds.size())
            return leaveOut(object);
        auto& sent = const_cast<Base&>(*object); // which is only read
        return write(object, list, [&](FlatFields& fields) {
            auto number = static_cast<std::uint32_t>(kind);
            fields.plain(number);
            if constexpr (std::is_same_v<Base, osg::Callback>) {
                std::uint32_t nested = numberOf(sent.getNestedCallback());
                fields.plain(nested);
            }
            kinds[kind].exchange(fields, sent);
            if constexpr (!std::is_same_v<Base, osg::Callback>)
                exchangeCommon(fields, sent);
        });
    }

    template <class T, class Work>
    std::uint32_t write(const T* object, FlatList which, Work work)
    {
        const std::size_t begin = m_open.size();
        FlatFields fields(m_open, *this);
        work(fields);
        m_isCorrected = m_isCorrected || fields.isCorrected();
        FlatScene::List& list = m_flat.lists[static_cast<std::size_t>(which)];
        list.words.insert(list.words.end(), m_open.begin() + static_cast<std::ptrdiff_t>(begin),
                          m_open.end());
        m_open.resize(begin);
        ++list.records;
        if (!isHeldOnce(*object))
            m_numbers.emplace(object, list.records);
        return list.records;
    }

    /// Returns whether it is sure that only one other object refers to this one, so that it is met only once.
    bool isHeldOnce(const osg::Referenced& object) const
    {
        return m_sharing == SceneSharing::None && object.referenceCount() <= 1;
    }

    /// @return the number of an object that was met before; 0 for another one
    std::uint32_t known(const osg::Object* object) const
    {
        if (isHeldOnce(*object))
            return 0;
        const auto found = m_numbers.find(object);
        return found == m_numbers.end() ? 0 : found->second;
    }

    std::uint32_t leaveOut(const osg::Object* object)
    {
        if (object)
            m_leftOut.insert(object->libraryName() + std::string("::") + object->className());
        return 0;
    }

    /// Notes the attributes of a state that are not sent with it.
    void noteStrangers(const osg::StateSet& state)
    {
        const auto look = [this](const osg::StateSet::AttributeList& list) {
            for (const auto& [type, attribute] : list) {
                if (flatKindOf(*attribute.first) == flatAttributes().size())
                    leaveOut(attribute.first);
            }
        };
        look(state.getAttributeList());
        for (const osg::StateSet::AttributeList& list : state.getTextureAttributeList())
            look(list);
    }

    /// @return a node of a class that is sent, with what it can have of one of another class
    osg::ref_ptr<osg::Node> standIn(const osg::Node& node)
    {
        const bool isTheSame =
            typeid(node) == typeid(osg::Node) || typeid(node) == typeid(osg::ShapeDrawable);
        if (!isTheSame)
            leaveOut(&node);
        osg::ref_ptr<osg::Node> other;
        if (const osg::Geometry* geometry = node.asGeometry())
            other = new osg::Geometry(*geometry);
        else if (node.asDrawable())
            other = new osg::Geometry;
        else if (const osg::Group* group = node.asGroup())
            other = plainGroup(*group);
        else
            other = new osg::Group;
        other->setName(node.getName());
        other->setStateSet(const_cast<osg::StateSet*>(node.getStateSet()));
        other->setNodeMask(node.getNodeMask());
        return other;
    }

    static osg::ref_ptr<osg::Node> plainGroup(const osg::Group& group)
    {
        osg::ref_ptr<osg::Group> plain = new osg::Group;
        if (const osg::Transform* transform = group.asTransform()) {
            osg::Matrix matrix;
            transform->computeLocalToWorldMatrix(matrix, nullptr);
            plain = new osg::MatrixTransform(matrix);
        }
        for (unsigned int i = 0; i < group.getNumChildren(); ++i)
            plain->addChild(const_cast<osg::Node*>(group.getChild(i)));
        return plain;
    }

    FlatScene& m_flat;
    bool (*m_canSend)(const osg::Image&);
    SceneSharing m_sharing;
    std::vector<std::uint32_t> m_open;
    std::unordered_map<std::string, std::uint32_t> m_texts;
    std::unordered_map<const osg::Object*, std::uint32_t> m_numbers; ///< of objects that may be met again
    std::set<std::string> m_leftOut;
    bool m_isCorrected = false;
};

/// Goes through a list, and checks its records or makes what they stand for.
template <class Base>
class Walk
{
public:
    Walk(const FlatSceneView::List& list, FlatTables& tables, bool isMaking)
        : m_list(list), m_tables(tables), m_fields(list.words, list.size, tables, isMaking)
    {}

    bool run(const FlatKinds<Base>& kinds)
    {
        std::vector<osg::ref_ptr<Base>> prototypes;
        for (const FlatKind<Base>& kind : kinds)
            prototypes.push_back(m_fields.isMaking() ? nullptr : kind.make());
        return each([&] {
            std::uint32_t kind = 0;
            m_fields.plain(kind);
            if (!m_fields.require(kind < kinds.size()))
                return osg::ref_ptr<Base>();
            const osg::ref_ptr<Base> object = m_fields.isMaking() ? kinds[kind].make() : prototypes[kind];
            if constexpr (std::is_same_v<Base, osg::Callback>)
                takeNested(*object);
            kinds[kind].exchange(m_fields, *object);
            if constexpr (!std::is_same_v<Base, osg::Callback>)
                exchangeCommon(m_fields, *object);
            if constexpr (std::is_same_v<Base, osg::Node>)
                checkExtent();
            return object;
        });
    }

    /// Of objects that are all of one class.
    bool run()
    {
        const osg::ref_ptr<Base> prototype = new Base;
        return each([&] {
            const osg::ref_ptr<Base> object = m_fields.isMaking() ? new Base : prototype.get();
            exchange(m_fields, *object);
            return object;
        });
    }

private:
    template <class One>
    bool each(One one)
    {
        auto& table = m_tables.of(static_cast<const Base*>(nullptr));
        table.clear();
        if (!m_fields.require(m_list.records <= m_list.size))
            return false;
        table.reserve(m_list.records);
        for (std::uint32_t i = 0; i < m_list.records && m_fields.isGood(); ++i)
            table.push_back(one());
        return m_fields.require(m_fields.isAtEnd());
    }

    /// Callbacks of a node are nested, each in the one before it.
    void takeNested(osg::Callback& callback)
    {
        std::uint32_t number = 0;
        m_fields.plain(number);
        if (!m_fields.require(number <= m_tables.callbacks.size()))
            return;
        if (m_fields.isMaking()) {
            callback.setNestedCallback(number > 0 ? m_tables.callbacks[number - 1].get() : nullptr);
            return;
        }
        m_chains.push_back(number > 0 ? m_chains[number - 1] + 1 : 1);
        m_fields.require(m_chains.back() <= longestCallbackChain);
    }

    void checkExtent()
    {
        if (m_fields.isMaking())
            return;
        const FlatExtent extent = m_fields.takeExtent();
        m_fields.require(extent.depth <= deepestScene && extent.visits <= mostVisits);
        m_tables.extents.push_back(extent);
    }

    const FlatSceneView::List& m_list;
    FlatTables& m_tables;
    FlatFields m_fields;
    std::vector<std::uint32_t> m_chains; ///< how many callbacks are nested in each
};

bool walk(const FlatSceneView& scene, FlatTables& tables, bool isMaking)
{
    const auto list = [&scene](FlatList which) -> const FlatSceneView::List& {
        return scene.lists[static_cast<std::size_t>(which)];
    };
    tables.extents.clear();
    return Walk<osg::StateAttribute>(list(FlatList::Attributes), tables, isMaking).run(flatAttributes()) &&
           Walk<osg::StateSet>(list(FlatList::States), tables, isMaking).run() &&
           Walk<osg::Callback>(list(FlatList::Callbacks), tables, isMaking).run(flatCallbacks()) &&
           Walk<osg::Node>(list(FlatList::Nodes), tables, isMaking).run(flatNodes()) && !tables.nodes.empty();
}

} // namespace

void exchangeObject(FlatFields& fields, osg::Object& object)
{
    fields.value(
        object, [](const osg::Object& from) { return from.getName(); },
        [](osg::Object& to, const std::string& name) { to.setName(name); });
    fields.choice(object, &osg::Object::getDataVariance, &osg::Object::setDataVariance,
                  FlatChoices<3>{osg::Object::UNSPECIFIED, osg::Object::STATIC, osg::Object::DYNAMIC});
}

std::size_t flatKindOf(const osg::StateAttribute& attribute)
{
    return findKind(flatAttributes(), attribute);
}

std::size_t flatKindOf(const osg::Callback& callback)
{
    return findKind(flatCallbacks(), callback);
}

std::size_t flatKindOf(const osg::Node& node)
{
    return findKind(flatNodes(), node);
}

FlatScene flatten(const osg::Node& scene, bool (*canSend)(const osg::Image& image), SceneSharing sharing)
{
    FlatScene flat;
    Flattener(flat, canSend, sharing).run(scene);
    return flat;
}

bool checkScene(const FlatSceneView& scene, FlatTables& tables)
{
    return walk(scene, tables, false);
}

osg::ref_ptr<osg::Node> makeScene(const FlatSceneView& scene, FlatTables& tables)
{
    return walk(scene, tables, true) ? tables.nodes.back() : nullptr;
}

} // namespace vfFormats
