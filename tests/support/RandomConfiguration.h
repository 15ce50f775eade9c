#pragma once

#include "Bits.h"

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <QLocale>
#include <QStringList>

#include <cmath>
#include <random>

/// Fills a configuration with values from the whole range of each type, and texts from an alphabet.
class RandomConfiguration {
public:
    explicit RandomConfiguration(const QStringList& alphabet) : alphabet_(alphabet) {}

    Nereo::Io::Nereo2ConfigFile next()
    {
        Nereo::Io::Nereo2ConfigFile config;
        for (const std::string& key : config.keys()) {
            Nereo::Io::Setting& setting = config.setting(key);
            setting.setValueFromString(textFor(setting.type()).toStdString());
        }
        return config;
    }

private:
    QString textFor(Nereo::Io::Setting::Type type)
    {
        switch (type) {
        case Nereo::Io::Setting::Int:
            return QString::number(int(bits_()));
        case Nereo::Io::Setting::Double:
            return QString::number(anyDouble(), 'g', QLocale::FloatingPointShortest);
        default:
            return anyText();
        }
    }

    double anyDouble()
    {
        double number;
        do {
            number = fromBits(bits_());
        } while (!std::isfinite(number));
        return number;
    }

    QString anyText()
    {
        QString text;
        for (quint64 length = 1 + bits_() % 20; length > 0; --length)
            text += alphabet_[int(bits_() % quint64(alphabet_.size()))];
        return text;
    }

    QStringList alphabet_;
    std::mt19937_64 bits_ {20240917};
};
