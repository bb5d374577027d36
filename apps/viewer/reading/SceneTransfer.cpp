// SPDX-License-Identifier: MIT
#include "reading/SceneTransfer.h"

#include "reading/FileGate.h"
#include "reading/LargeArray.h"

#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osgDB/Registry>

#include <cstring>
#include <istream>
#include <new>
#include <set>
#include <sstream>
#include <streambuf>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfViewer {

namespace {

/// Arrays smaller than this are left where they are.
constexpr std::size_t smallestBlock = 256;

/// Finds arrays and indices in the order of the scene, each once: the same order in the copy of a scene as in the scene.
class FindBlocks : public osg::NodeVisitor
{
public:
    FindBlocks() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Geometry& geometry) override
    {
        osg::Geometry::ArrayList arrays;
        geometry.getArrayList(arrays);
        for (const auto& array : arrays)
            add(*array);
        for (unsigned int i = 0; i < geometry.getNumPrimitiveSets(); ++i) {
            if (auto* indices = dynamic_cast<osg::DrawElements*>(geometry.getPrimitiveSet(i)))
                add(*indices);
        }
    }

    std::vector<osg::BufferData*> found;

private:
    void add(osg::BufferData& data)
    {
        if (m_seen.insert(&data).second)
            found.push_back(&data);
    }

    std::set<const osg::BufferData*> m_seen;
};

void resize(osg::BufferData& data, unsigned int count)
{
    if (auto* array = dynamic_cast<osg::Array*>(&data))
        array->resizeArray(count);
    else
        dynamic_cast<osg::DrawElements&>(data).resizeElements(count);
}

unsigned int countOf(const osg::BufferData& data)
{
    if (const auto* array = dynamic_cast<const osg::Array*>(&data))
        return array->getNumElements();
    return dynamic_cast<const osg::DrawElements&>(data).getNumIndices();
}

/// Lets go of the memory, too.
void empty(osg::BufferData& data)
{
    resize(data, 0);
    if (auto* array = dynamic_cast<osg::Array*>(&data))
        array->trim();
}

/// Where an array stands in the file.
struct Block
{
    std::uint32_t index; ///< in the order of FindBlocks
    std::uint32_t count;
    std::uint64_t offset;
    std::uint64_t size;
};

/// What stands at the end of the file.
struct Trailer
{
    std::uint64_t magic = 0x76665363656e6531;
    std::uint64_t blockCount = 0;
    std::uint64_t sceneSize = 0; ///< 0 for none
};

class Sink
{
public:
    explicit Sink(int file) : m_file(file) {}

    void put(const void* data, std::size_t size)
    {
        const char* bytes = static_cast<const char*>(data);
        while (m_isGood && size > 0) {
            const ssize_t written = pwrite(m_file, bytes, size, m_offset);
            if (written <= 0) {
                m_isGood = false;
                return;
            }
            bytes += written;
            size -= static_cast<std::size_t>(written);
            m_offset += written;
        }
    }

    void put(const std::string& text)
    {
        const std::uint64_t size = text.size();
        put(&size, sizeof(size));
        put(text.data(), text.size());
    }

    void put(const std::vector<std::string>& texts)
    {
        const std::uint64_t count = texts.size();
        put(&count, sizeof(count));
        for (const std::string& text : texts)
            put(text);
    }

    /// What follows may be taken for numbers of any kind where it lies.
    void align() { m_offset = (m_offset + 15) / 16 * 16; }

    bool isGood() const { return m_isGood; }
    long long offset() const { return m_offset; }

private:
    int m_file;
    long long m_offset = transferHeaderSize;
    bool m_isGood = true;
};

/// A file in memory as it is mapped; everything that is taken from it is checked against its end.
class Source
{
public:
    Source(int file, long long size) : m_size(size)
    {
        // Whatever the other process says: beyond the end there is no memory.
        struct stat status;
        if (size > 0 && fstat(file, &status) == 0 && status.st_size >= size)
            m_map =
                mmap(nullptr, static_cast<std::size_t>(size), PROT_READ, MAP_SHARED | MAP_POPULATE, file, 0);
    }
    ~Source()
    {
        if (m_map != MAP_FAILED)
            munmap(m_map, static_cast<std::size_t>(m_size));
    }

    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    /// @return null where the file does not reach that far
    const char* at(std::uint64_t offset, std::uint64_t size) const
    {
        const auto end = static_cast<std::uint64_t>(m_size);
        if (m_map == MAP_FAILED || offset > end || size > end - offset)
            return nullptr;
        return static_cast<const char*>(m_map) + offset;
    }

    bool take(std::uint64_t& offset, void* data, std::size_t size) const
    {
        const char* bytes = at(offset, size);
        if (!bytes)
            return false;
        if (size > 0)
            std::memcpy(data, bytes, size);
        offset += size;
        return true;
    }

    bool take(std::uint64_t& offset, std::string& text) const
    {
        std::uint64_t size = 0;
        if (!take(offset, &size, sizeof(size)))
            return false;
        const char* bytes = at(offset, size);
        if (!bytes)
            return false;
        text.assign(bytes, size);
        offset += size;
        return true;
    }

    bool take(std::uint64_t& offset, std::vector<std::string>& texts) const
    {
        std::uint64_t count = 0;
        if (!take(offset, &count, sizeof(count)))
            return false;
        for (std::uint64_t i = 0; i < count; ++i) {
            std::string text;
            if (!take(offset, text))
                return false;
            texts.push_back(std::move(text));
        }
        return true;
    }

private:
    long long m_size;
    void* m_map = MAP_FAILED;
};

/// Reads from memory that somebody else owns.
class MemoryBuffer : public std::streambuf
{
public:
    MemoryBuffer(const char* data, std::size_t size)
    {
        char* begin = const_cast<char*>(data);
        setg(begin, begin, begin + size);
    }

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode) override
    {
        const off_type size = egptr() - eback();
        if (direction == std::ios_base::cur)
            offset += gptr() - eback();
        else if (direction == std::ios_base::end)
            offset += size;
        if (offset < 0 || offset > size)
            return pos_type(off_type(-1));
        setg(eback(), eback() + offset, egptr());
        return pos_type(offset);
    }

    pos_type seekpos(pos_type position, std::ios_base::openmode mode) override
    {
        return seekoff(position, std::ios_base::beg, mode);
    }
};

osgDB::ReaderWriter* sceneFormat()
{
    return osgDB::Registry::instance()->getReaderWriterForExtension("osgb");
}

/// @return the scene without its large arrays, empty when it cannot be written
std::string writeRest(const osg::Node& scene)
{
    std::ostringstream stream;
    const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("WriteImageHint=IncludeData");
    osgDB::ReaderWriter* format = sceneFormat();
    if (!format || !format->writeNode(scene, stream, options).success())
        return std::string();
    return stream.str();
}

} // namespace

long long sendOutcome(int file, ReadOutcome& outcome)
{
    Sink sink(file);
    std::vector<Block> blocks;
    std::string rest;
    if (outcome.scene) {
        FindBlocks finder;
        outcome.scene->accept(finder);
        for (std::size_t i = 0; i < finder.found.size(); ++i) {
            osg::BufferData& data = *finder.found[i];
            const std::size_t size = data.getTotalDataSize();
            if (size < smallestBlock || !data.getDataPointer())
                continue;
            sink.align();
            blocks.push_back({static_cast<std::uint32_t>(i), countOf(data),
                              static_cast<std::uint64_t>(sink.offset()), size});
            sink.put(data.getDataPointer(), size);
            empty(data);
        }
        rest = writeRest(*outcome.scene);
        if (rest.empty())
            outcome.reason = "it cannot be handed on by the process that read it";
    }
    const std::uint64_t start = static_cast<std::uint64_t>(sink.offset());
    sink.put(outcome.reason);
    sink.put(outcome.warnings);
    sink.put(outcome.details);
    sink.put(outcome.files);
    Trailer trailer;
    trailer.blockCount = blocks.size();
    trailer.sceneSize = rest.size();
    sink.put(&trailer, sizeof(trailer));
    sink.put(blocks.data(), blocks.size() * sizeof(Block));
    sink.put(rest.data(), rest.size());
    sink.put(&start, sizeof(start));
    return sink.isGood() ? sink.offset() : 0;
}

namespace {

template <class Array>
bool fillAs(osg::BufferData& data, const char* bytes, const Block& block)
{
    using Element = typename Array::value_type;
    auto* array = dynamic_cast<Array*>(&data);
    if (!array || block.size % sizeof(Element) != 0)
        return false;
    const auto* elements = reinterpret_cast<const Element*>(bytes);
    reserveLarge(array->asVector(), block.size / sizeof(Element));
    array->assign(elements, elements + block.size / sizeof(Element));
    return true;
}

/// The arrays that are large take their elements in one go; the others are made as large first.
void fill(osg::BufferData& data, const char* bytes, const Block& block)
{
    if (fillAs<osg::Vec3Array>(data, bytes, block) || fillAs<osg::Vec2Array>(data, bytes, block) ||
        fillAs<osg::Vec4Array>(data, bytes, block) || fillAs<osg::DrawElementsUInt>(data, bytes, block))
        return;
    resize(data, block.count);
    if (data.getTotalDataSize() == block.size)
        std::memcpy(const_cast<void*>(data.getDataPointer()), bytes, block.size);
}

osg::ref_ptr<osg::Node> receiveScene(const Source& source, std::uint64_t offset, const Trailer& trailer,
                                     const std::atomic<bool>& stop)
{
    std::vector<Block> blocks(trailer.blockCount);
    if (!source.take(offset, blocks.data(), blocks.size() * sizeof(Block)))
        return nullptr;
    const char* rest = source.at(offset, trailer.sceneSize);
    osgDB::ReaderWriter* format = sceneFormat();
    if (!rest || !format)
        return nullptr;
    MemoryBuffer buffer(rest, trailer.sceneSize);
    std::istream stream(&buffer);
    const FileGate::Shut shut; // everything the scene needs has come with it
    osg::ref_ptr<osg::Node> scene = format->readNode(stream, nullptr).getNode();
    if (!scene)
        return nullptr;
    FindBlocks finder;
    scene->accept(finder);
    for (const Block& block : blocks) {
        if (stop)
            return nullptr;
        const char* bytes = source.at(block.offset, block.size);
        if (!bytes || block.index >= finder.found.size())
            return nullptr;
        osg::BufferData& data = *finder.found[block.index];
        fill(data, bytes, block);
        if (data.getTotalDataSize() != block.size)
            return nullptr;
        data.dirty();
    }
    return scene;
}

} // namespace

ReadOutcome receiveOutcome(int file, long long size, const std::atomic<bool>& stop)
{
    constexpr const char* lost = "the process that read it did not hand it on whole";
    ReadOutcome outcome;
    const Source source(file, size);
    std::uint64_t offset = static_cast<std::uint64_t>(size) - sizeof(std::uint64_t);
    std::uint64_t start = 0;
    Trailer trailer;
    if (!source.take(offset, &start, sizeof(start)) || !source.take(start, outcome.reason) ||
        !source.take(start, outcome.warnings) || !source.take(start, outcome.details) ||
        !source.take(start, outcome.files) || !source.take(start, &trailer, sizeof(trailer)) ||
        trailer.magic != Trailer().magic || !source.at(start, trailer.blockCount * sizeof(Block)))
    {
        outcome.reason = lost;
        return outcome;
    }
    if (trailer.sceneSize == 0)
        return outcome;
    try {
        outcome.scene = receiveScene(source, start, trailer, stop);
        if (!outcome.scene)
            outcome.reason = lost;
    } catch (const std::bad_alloc&) {
        outcome.reason = "not enough memory";
    }
    return outcome;
}

} // namespace vfViewer
