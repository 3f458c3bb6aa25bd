#pragma once

#include <QFile>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

// What a translation file (translations/inkwarden_<language>.ts) says each English text becomes: the
// truth the tests hold the running views, menus and notifications against. Counted texts keep all
// their plural forms.
class TranslationCatalog
{
public:
    explicit TranslationCatalog(const QString &tsPath)
    {
        QFile file(tsPath);
        if (!file.open(QIODevice::ReadOnly)) {
            return;
        }
        QXmlStreamReader xml(&file);
        QString context;
        QString source;
        QStringList forms;
        bool counted = false;
        while (!xml.atEnd()) {
            xml.readNext();
            if (!xml.isStartElement()) {
                if (xml.isEndElement() && xml.name() == QLatin1String("message")) {
                    m_texts.insert(key(context, source), forms);
                    forms.clear();
                }
                continue;
            }
            if (xml.name() == QLatin1String("message")) {
                counted = xml.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
            } else if (xml.name() == QLatin1String("name")) {
                context = xml.readElementText();
            } else if (xml.name() == QLatin1String("source")) {
                source = xml.readElementText();
            } else if (xml.name() == QLatin1String("translation")) {
                // A counted text's forms are the <numerusform>s inside; an unfinished one counts as none.
                if (xml.attributes().value(QLatin1String("type")).isEmpty() && !counted) {
                    forms.append(xml.readElementText());
                } else if (!counted) {
                    xml.skipCurrentElement();
                }
            } else if (xml.name() == QLatin1String("numerusform")) {
                forms.append(xml.readElementText());
            }
        }
        m_valid = !xml.hasError() && !m_texts.isEmpty();
    }

    [[nodiscard]] bool isValid() const { return m_valid; }
    [[nodiscard]] qsizetype size() const { return m_texts.size(); }

    // The translation of `source` in `context`; its first form for a counted text; empty when the file
    // has none.
    [[nodiscard]] QString text(const QString &context, const QString &source) const
    {
        const QStringList forms = m_texts.value(key(context, source));
        return forms.isEmpty() ? QString() : forms.constFirst();
    }
    [[nodiscard]] QStringList forms(const QString &context, const QString &source) const
    {
        return m_texts.value(key(context, source));
    }
    // What `source` becomes in any context: the same English word may be translated differently in
    // different places.
    [[nodiscard]] QStringList translationsOf(const QString &source) const
    {
        QStringList texts;
        for (auto it = m_texts.cbegin(); it != m_texts.cend(); ++it) {
            if (it.key().section(QChar(0x1f), 1) == source) {
                texts += it.value();
            }
        }
        return texts;
    }
    // Every English text with a translation that differs from it, whatever its context.
    [[nodiscard]] QStringList changedSources() const
    {
        QStringList sources;
        for (auto it = m_texts.cbegin(); it != m_texts.cend(); ++it) {
            const QString source = it.key().section(QChar(0x1f), 1);
            if (!it.value().isEmpty() && !it.value().contains(source)) {
                sources.append(source);
            }
        }
        return sources;
    }

private:
    static QString key(const QString &context, const QString &source) { return context + QChar(0x1f) + source; }

    QHash<QString, QStringList> m_texts;
    bool m_valid = false;
};
