#include "support/PrivateAccess.h"
#include "support/Slots.h"
#include "support/TemporaryFolder.h"

#include "FileIO/FileAccess.h"
#include "FileIO/Reader.h"
#include "FileIO/Writer.h"

#include <NereoFileIO/File.h>

#include <QDir>
#include <QTextCodec>

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>
#include <type_traits>

namespace Nereo::Io {

NEREO_PRIVATE_MEMBER(filePathOf, std::string File::*, &File::filePath_)

namespace {

using ::testing::ElementsAre;
using ::testing::Return;
using ::testing::ThrowsMessage;
using Util::Version;

class MockFile : public File {
public:
    MOCK_METHOD(bool, doLoadFrom, (const std::string& path), (override));
    MOCK_METHOD(bool, doSaveTo, (const std::string& path), (const, override));
};

/// A file with hooks that do nothing, which can be copied.
class PlainFile : public File {
public:
    bool result = true;

protected:
    bool doLoadFrom(const std::string&) override { return result; }
    bool doSaveTo(const std::string&) const override { return result; }
};

TEST(File, StartsWithTheCurrentVersionAndNoPath)
{
    const PlainFile file;
    EXPECT_EQ(file.version(), Version::Current);
    EXPECT_EQ(file.filePath(), "");
}

TEST(File, GivesTheResultOfItsHooksUnchanged)
{
    MockFile file;
    EXPECT_CALL(file, doLoadFrom("a/path")).WillOnce(Return(true)).WillOnce(Return(false));
    EXPECT_TRUE(file.loadFrom("a/path"));
    EXPECT_FALSE(file.loadFrom("a/path"));

    EXPECT_CALL(file, doSaveTo("another")).WillOnce(Return(true)).WillOnce(Return(false));
    EXPECT_TRUE(file.saveTo("another"));
    EXPECT_FALSE(file.saveTo("another"));
}

TEST(File, RecordsThePathBeforeTheAttempt)
{
    MockFile file;
    EXPECT_CALL(file, doLoadFrom).WillOnce([&file](const std::string&) {
        EXPECT_EQ(file.filePath(), "in");
        return false;
    });
    EXPECT_FALSE(file.loadFrom("in"));
    EXPECT_EQ(file.filePath(), "in");

    EXPECT_CALL(file, doSaveTo).WillOnce([&file](const std::string&) {
        EXPECT_EQ(file.filePath(), "out");
        return false;
    });
    EXPECT_FALSE(std::as_const(file).saveTo("out"));
    EXPECT_EQ(file.filePath(), "out");
}

TEST(File, TakesItsOwnPathAgain)
{
    MockFile file;
    const std::string& path = file.*filePathOf();
    EXPECT_CALL(file, doLoadFrom("a/path")).Times(3).WillRepeatedly(Return(true));
    EXPECT_CALL(file, doSaveTo("a/path")).Times(2).WillRepeatedly(Return(true));
    EXPECT_TRUE(file.loadFrom("a/path"));
    EXPECT_TRUE(file.loadFrom(file.filePath()));
    EXPECT_TRUE(file.saveTo(file.filePath()));
    EXPECT_TRUE(file.loadFrom(path)); // the very string in which the path is kept
    EXPECT_TRUE(file.saveTo(path));
    EXPECT_EQ(file.filePath(), "a/path");
}

TEST(File, RecordsThePathOfALoadThatThrows)
{
    MockFile file;
    EXPECT_CALL(file, doLoadFrom).WillOnce([](const std::string&) -> bool {
        throw std::runtime_error("broken");
    });
    EXPECT_THAT([&] { file.loadFrom("in"); }, ThrowsMessage<std::runtime_error>("broken"));
    EXPECT_EQ(file.filePath(), "in");
}

TEST(File, KeepsTheVersionThatIsSet)
{
    PlainFile file;
    file.setVersion(Version(1, 2, 3, 4));
    EXPECT_EQ(file.version(), Version(1, 2, 3, 4));
}

TEST(File, CopiesVersionAndPath)
{
    PlainFile file;
    file.setVersion(Version(1, 2, 3, 4));
    file.loadFrom("a/path");

    const PlainFile copy(file);
    EXPECT_EQ(copy.version(), Version(1, 2, 3, 4));
    EXPECT_EQ(copy.filePath(), "a/path");

    PlainFile assigned;
    EXPECT_EQ(&(assigned = file), &assigned);
    EXPECT_EQ(assigned.version(), Version(1, 2, 3, 4));
    EXPECT_EQ(assigned.filePath(), "a/path");
}

TEST(File, IsUnchangedByAssignmentToItself)
{
    PlainFile file;
    file.setVersion(Version(1, 2, 3, 4));
    file.loadFrom("a/path");
    const PlainFile& itself = file;
    file = itself;
    EXPECT_EQ(file.version(), Version(1, 2, 3, 4));
    EXPECT_EQ(file.filePath(), "a/path");
}

static_assert(std::is_abstract_v<File> && std::has_virtual_destructor_v<File>);
static_assert(std::is_abstract_v<Reader<QTextStream>> && std::has_virtual_destructor_v<Reader<QTextStream>>);
static_assert(std::is_abstract_v<Writer<QTextStream>> && std::has_virtual_destructor_v<Writer<QTextStream>>);

// Programs that were compiled earlier call virtual operations by their slots.
#ifdef NEREO_ITANIUM_SLOTS
TEST(VirtualOperations, KeepTheirSlotsBehindTheDestructor)
{
    EXPECT_EQ(slotOf(&MockFile::doLoadFrom), firstSlotBehindDestructor);
    EXPECT_EQ(slotOf(&MockFile::doSaveTo), firstSlotBehindDestructor + 1);
    EXPECT_EQ(slotOf(&Reader<QTextStream>::read), firstSlotBehindDestructor);
    EXPECT_EQ(slotOf(&Reader<QXmlStreamReader>::read), firstSlotBehindDestructor);
    EXPECT_EQ(slotOf(&Reader<QDataStream>::read), firstSlotBehindDestructor);
    EXPECT_EQ(slotOf(&Writer<QTextStream>::write), firstSlotBehindDestructor);
    EXPECT_EQ(slotOf(&Writer<QXmlStreamWriter>::write), firstSlotBehindDestructor);
}
#endif

// The way from a path to a format, with formats that hold one text.

struct Content {
    QByteArray text;
    bool read = false;
    mutable bool written = false;
};

/// Reads what a device gives, and says that it failed, which no load asks about.
template <class Stream>
class RawReader : public Reader<Stream> {
public:
    explicit RawReader(Content& content) : content_(&content) {}

    bool read(Stream& stream) override
    {
        content_->text = stream.device()->readAll();
        content_->read = true;
        return false;
    }

private:
    Content* content_;
};

class TextReader : public Reader<QTextStream> {
public:
    explicit TextReader(Content& content) : content_(&content) {}

    bool read(QTextStream& in) override
    {
        content_->text = in.readAll().toUtf8();
        return true;
    }

private:
    Content* content_;
};

class XmlReader : public Reader<QXmlStreamReader> {
public:
    explicit XmlReader(Content&) {}

    bool read(QXmlStreamReader& xml) override
    {
        while (!xml.atEnd())
            xml.readNext();
        return true;
    }
};

class ThrowingReader : public Reader<QTextStream> {
public:
    explicit ThrowingReader(Content&) {}

    bool read(QTextStream&) override { throw std::runtime_error("broken"); }
};

class TextWriter : public Writer<QTextStream> {
public:
    explicit TextWriter(const Content& content) : content_(&content) {}

    void write(QTextStream& out) override
    {
        out << QString::fromUtf8(content_->text);
        content_->written = true;
    }

private:
    const Content* content_;
};

/// Runs out of memory, with text that the stream hasn't given to the device yet.
class ThrowingWriter : public Writer<QTextStream> {
public:
    explicit ThrowingWriter(const Content&) {}

    void write(QTextStream& out) override
    {
        out << "text";
        throw std::bad_alloc();
    }
};

class ThrowingXmlWriter : public Writer<QXmlStreamWriter> {
public:
    explicit ThrowingXmlWriter(const Content&) {}

    void write(QXmlStreamWriter&) override { throw std::bad_alloc(); }
};

class XmlWriter : public Writer<QXmlStreamWriter> {
public:
    explicit XmlWriter(const Content& content) : content_(&content) {}

    void write(QXmlStreamWriter& xml) override
    {
        xml.writeStartElement("root");
        xml.writeTextElement("text", QString::fromUtf8(content_->text));
        xml.writeEndElement();
        content_->written = true;
    }

private:
    const Content* content_;
};

/// What has been destroyed, in this order.
std::vector<std::string> destroyed;

class NotedStream : public QTextStream {
public:
    using QTextStream::QTextStream;

    ~NotedStream() override
    {
        destroyed.push_back(device()->isOpen() ? "stream" : "stream of a closed file");
    }
};

void noteEndOf(const QIODevice* device)
{
    QObject::connect(device, &QObject::destroyed, [] { destroyed.push_back("file"); });
}

class NotedReader : public Reader<NotedStream> {
public:
    explicit NotedReader(Content&) {}
    ~NotedReader() override { destroyed.push_back("strategy"); }

    bool read(NotedStream& in) override
    {
        noteEndOf(in.device());
        return true;
    }
};

class NotedWriter : public Writer<NotedStream> {
public:
    explicit NotedWriter(const Content& content) : content_(&content) {}
    ~NotedWriter() override { destroyed.push_back("strategy"); }

    void write(NotedStream& out) override
    {
        noteEndOf(out.device());
        if (content_->text.isEmpty())
            throw std::runtime_error("empty");
    }

private:
    const Content* content_;
};

class FileAccess : public ::testing::Test {
protected:
    TemporaryFolder folder;
    Content content;
};

TEST_F(FileAccess, FailsWhereThereIsNoFileToOpen)
{
    const std::string cases[] = {
        folder.path("missing"),
        folder.path(),                                            // a folder
        "", folder.write("file", "x") + std::string("\0.xml", 5), // no name for a file
    };
    for (const std::string& path : cases) {
        EXPECT_FALSE(load<RawReader<QTextStream>>(path, content)) << path;
        EXPECT_FALSE(content.read) << path;
    }
}

TEST_F(FileAccess, FailsWhereNoFileCanBeWritten)
{
    const std::string cases[] = {
        folder.path("missing/file"),
        folder.path(),                                               // a folder
        "", folder.write("file", "kept") + std::string("\0.xml", 5), // no name for a file
    };
    for (const std::string& path : cases) {
        EXPECT_FALSE(save<TextWriter>(path, content)) << path;
        EXPECT_FALSE(content.written) << path;
    }
    EXPECT_EQ(readBytes(folder.path("file")), "kept");
}

TEST_F(FileAccess, OpensPathsInUtf8)
{
    content.text = "text";
    const std::string path = folder.path("Strömung \xE6\xB5\x81 x.txt");
    ASSERT_TRUE(save<TextWriter>(path, content));
    EXPECT_EQ(readBytes(path), "text");
    Content loaded;
    EXPECT_TRUE(load<TextReader>(path, loaded));
    EXPECT_EQ(loaded.text, "text");
}

TEST_F(FileAccess, TranslatesLineEndsExceptInBinaryFiles)
{
    const std::string path = folder.write("file", "a\r\nb\n");
    EXPECT_TRUE(load<RawReader<QTextStream>>(path, content));
    EXPECT_EQ(content.text, "a\nb\n");
    EXPECT_TRUE(load<RawReader<QXmlStreamReader>>(path, content));
    EXPECT_EQ(content.text, "a\nb\n");
    EXPECT_TRUE(load<RawReader<QDataStream>>(path, content));
    EXPECT_EQ(content.text, "a\r\nb\n");
}

TEST_F(FileAccess, ReadsAndWritesTextInUtf8)
{
    EXPECT_TRUE(load<TextReader>(folder.write("file", "Lüfter"), content));
    EXPECT_EQ(content.text, "Lüfter");
    EXPECT_TRUE(save<TextWriter>(folder.path("copy"), content));
    EXPECT_EQ(readBytes(folder.path("copy")), "Lüfter");
}

TEST_F(FileAccess, ReadsUtf16WithAByteOrderMark)
{
    const struct {
        const char* text;
        const char* read;
        bool isReadAsXml;
    } cases[] = {
        {"Lüfter\n", "Lüfter\n", true },
        {"a\r\nb",    "a\nb",      false}, // opened as text, the file loses each byte that is a carriage return
        {"\xC4\x8D",  "\xC4\x8D",  false}, // U+010D
    };
    for (const auto& [text, read, isReadAsXml] : cases) {
        const auto written = [&, text = text](const QString& before, const QString& after) {
            const QString all = QChar(QChar::ByteOrderMark) + before + QString::fromUtf8(text) + after;
            return folder.write("file",
                                std::string(reinterpret_cast<const char*>(all.utf16()),
                                            std::size_t(all.size()) * sizeof(QChar)));
        };
        EXPECT_TRUE(load<TextReader>(written("", ""), content)) << text;
        EXPECT_EQ(content.text, read);
        EXPECT_EQ(load<XmlReader>(written("<a>", "</a>"), content), isReadAsXml) << text;
        EXPECT_EQ(load<XmlReader>(written("<?xml version='1.0' encoding='UTF-16'?><a>", "</a>"), content),
                  isReadAsXml)
            << text;
        EXPECT_FALSE(load<XmlReader>(written("<?xml version='1.0' encoding='UTF-8'?><a>", "</a>"), content))
            << text;
    }
}

TEST_F(FileAccess, ReadsAndWritesTextInUtf8WhateverTheLocale)
{
    QTextCodec* const before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    EXPECT_TRUE(load<TextReader>(folder.write("file", "Lüfter"), content));
    EXPECT_TRUE(save<TextWriter>(folder.path("copy"), content));
    QTextCodec::setCodecForLocale(before);
    EXPECT_EQ(content.text, "Lüfter");
    EXPECT_EQ(readBytes(folder.path("copy")), "Lüfter");
}

TEST_F(FileAccess, FailsToSaveATextThatXmlCannotCarry)
{
    for (const char* text : {"a\x01"
                             "b",
                             "\x0B", "a\x1F"}) {
        content.text = text;
        EXPECT_FALSE(save<XmlWriter>(folder.path("file"), content)) << text;
    }
}

TEST_F(FileAccess, FollowsTheEncodingThatXmlDeclares)
{
    EXPECT_TRUE(load<XmlReader>(folder.write("a.xml", "<?xml version='1.0' encoding='latin1'?><a>\xFC</a>"),
                                content));
    EXPECT_FALSE(load<XmlReader>(folder.write("b.xml", "<?xml version='1.0'?><a>\xFC</a>"), content));
}

TEST_F(FileAccess, LoadsAnyTextAndOnlyWellFormedXml)
{
    const std::string path = folder.write("file", "<a><b></a>");
    EXPECT_TRUE(load<TextReader>(path, content));
    EXPECT_FALSE(load<XmlReader>(path, content));
    EXPECT_TRUE(load<XmlReader>(folder.write("good", "<a><b/></a>"), content));
    EXPECT_FALSE(load<XmlReader>(folder.write("empty", ""), content));
    EXPECT_TRUE(load<TextReader>(folder.path("empty"), content));
}

TEST_F(FileAccess, WritesXmlIndented)
{
    content.text = "a & b";
    EXPECT_TRUE(save<XmlWriter>(folder.path("file"), content));
    EXPECT_EQ(readBytes(folder.path("file")), "\n<root>\n    <text>a &amp; b</text>\n</root>");
}

TEST_F(FileAccess, ReplacesWhatStoodInTheFile)
{
    const std::string path = folder.write("file", "something longer");
    content.text = "short";
    EXPECT_TRUE(save<TextWriter>(path, content));
    EXPECT_EQ(readBytes(path), "short");
}

TEST_F(FileAccess, OnlyXmlNoticesAFullDisk)
{
    content.text = "small enough to be written when the file is closed";
    EXPECT_TRUE(save<TextWriter>("/dev/full", content));
    EXPECT_FALSE(save<XmlWriter>("/dev/full", content));

    content.text = QByteArray(1 << 20, 'x');
    EXPECT_TRUE(save<TextWriter>("/dev/full", content));
    EXPECT_FALSE(save<XmlWriter>("/dev/full", content));
}

TEST_F(FileAccess, ClosesTheFileWhenAReaderThrows)
{
    const auto openFiles = [] {
        return QDir("/proc/self/fd").entryList(QDir::System | QDir::AllEntries).size();
    };
    const std::string path = folder.write("file", "text");
    const int before = openFiles();
    EXPECT_THAT([&] { load<ThrowingReader>(path, content); }, ThrowsMessage<std::runtime_error>("broken"));
    EXPECT_EQ(openFiles(), before);
}

TEST_F(FileAccess, DestroysTheStrategyThenTheStreamThenTheFile)
{
    const std::string path = folder.write("file", "text");
    destroyed.clear();
    EXPECT_TRUE(load<NotedReader>(path, content));
    EXPECT_THAT(destroyed, ElementsAre("strategy", "stream", "file"));

    destroyed.clear();
    content.text = "text";
    EXPECT_TRUE(save<NotedWriter>(path, content));
    EXPECT_THAT(destroyed, ElementsAre("strategy", "stream", "file"));

    destroyed.clear();
    content.text.clear();
    EXPECT_THROW(save<NotedWriter>(path, content), std::runtime_error);
    EXPECT_THAT(destroyed, ElementsAre("strategy", "stream", "file"));
}

TEST_F(FileAccess, WritesNothingMoreWhenAWriterThrows)
{
    EXPECT_THROW(save<ThrowingWriter>(folder.path("file"), content), std::bad_alloc);
    EXPECT_EQ(readBytes(folder.path("file")), "");
    EXPECT_THROW(save<ThrowingXmlWriter>(folder.path("file"), content), std::bad_alloc);
    EXPECT_EQ(readBytes(folder.path("file")), "");
}

} // namespace
} // namespace Nereo::Io
