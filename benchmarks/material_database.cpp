// material_database METHOD FILE: does one thing with a material database and prints the seconds that it took.
//
//   load   loads it; prints also the bytes by which the process grew at its peak, and for the loaded model
//   scan   passes over its tokens, which is the least that a load has to do
//   save   loads it and saves it to FILE.saved
//   texts  writes the same elements to FILE.saved, whose texts were all made before the clock starts
//   names  loads it and looks up each material by its name

#include "Memory.h"

#include <NereoFileIO/MaterialDatabaseFile.h>

#include <QFile>
#include <QString>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

using Nereo::Io::MaterialDatabaseFile;

namespace {

template <class Action>
double secondsFor(Action action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void load(const std::string& path)
{
    const double before = memory("VmRSS:");
    MaterialDatabaseFile database;
    const double seconds = secondsFor([&] { database.loadFrom(path); });
    std::printf("%.4f %.0f %.0f\n", seconds, memory("VmHWM:") - before, memory("VmRSS:") - before);
}

void scan(const std::string& path)
{
    const double seconds = secondsFor([&] {
        QFile file(QString::fromStdString(path));
        file.open(QIODevice::ReadOnly | QIODevice::Text);
        QXmlStreamReader xml(&file);
        while (!xml.atEnd())
            xml.readNext();
    });
    std::printf("%.4f\n", seconds);
}

void save(const std::string& path)
{
    MaterialDatabaseFile database;
    database.loadFrom(path);
    std::printf("%.4f\n", secondsFor([&] { database.saveTo(path + ".saved"); }));
}

/// A step of a document: the start of an element, an element with a text, or an end.
struct Step {
    enum { Start, Text, End } kind;
    QString name;
    QString text; // of a start, the first attribute's
    QString attribute;
};

std::vector<Step> stepsOf(const std::string& path)
{
    std::vector<Step> steps;
    bool isTextOpen = false;
    QFile file(QString::fromStdString(path));
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            const auto attributes = xml.attributes();
            steps.push_back({Step::Start, xml.name().toString(), {}, {}});
            if (!attributes.isEmpty()) {
                steps.back().attribute = attributes[0].name().toString();
                steps.back().text = attributes[0].value().toString();
            }
        } else if (xml.isCharacters() && !xml.isWhitespace()) {
            steps.back().kind = Step::Text;
            steps.back().text = xml.text().toString();
            isTextOpen = true;
        } else if (xml.isEndElement() && isTextOpen) {
            isTextOpen = false;
        } else if (xml.isEndElement())
            steps.push_back({Step::End, {}, {}, {}});
    }
    return steps;
}

void write(const std::vector<Step>& steps, const std::string& path)
{
    QFile file(QString::fromStdString(path));
    file.open(QIODevice::WriteOnly | QIODevice::Text);
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    for (const Step& step : steps) {
        if (step.kind == Step::Text)
            xml.writeTextElement(step.name, step.text);
        else if (step.kind == Step::End)
            xml.writeEndElement();
        else {
            xml.writeStartElement(step.name);
            if (!step.attribute.isEmpty())
                xml.writeAttribute(step.attribute, step.text);
        }
    }
    xml.writeEndDocument();
}

void writeTexts(const std::string& path)
{
    const std::vector<Step> steps = stepsOf(path);
    std::printf("%.4f\n", secondsFor([&] { write(steps, path + ".saved"); }));
}

void lookUpNames(const std::string& path)
{
    MaterialDatabaseFile database;
    database.loadFrom(path);
    std::vector<std::string> names;
    for (int i = 0; i < database.count(); ++i)
        names.push_back(database.material(i).name());
    double ids = 0;
    const double seconds = secondsFor([&] {
        for (const std::string& name : names)
            ids += database.material(name).id();
    });
    std::printf("%.4f %.0f\n", seconds, ids);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string method = argc == 3 ? argv[1] : "";
    const struct {
        const char* name;
        void (*run)(const std::string& path);
    } methods[] = {
        {"load",  load       },
        {"scan",  scan       },
        {"save",  save       },
        {"texts", writeTexts },
        {"names", lookUpNames},
    };
    for (const auto& [name, run] : methods) {
        if (method == name) {
            run(argv[2]);
            return 0;
        }
    }
    std::fprintf(stderr, "usage: material_database load|scan|save|texts|names FILE\n");
    return 2;
}
