#include "XdgAutostart.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

namespace {

// A hand-made file can be anything; a desktop entry is a few hundred bytes.
constexpr qint64 MaximumEntrySize = qint64(1024) * 1024;

// The [Desktop Entry] group of a desktop file, read the way GLib's key files read it (and so GNOME's
// session reads autostart entries): comments and other groups skipped,
// white space around '=' ignored, the last of repeated keys kept. Localised keys such as
// "Name[de]" are dropped: none of the keys that decide whether Inkwarden starts has them.
class DesktopEntry
{
public:
    static DesktopEntry parse(const QByteArray &contents)
    {
        DesktopEntry entry;
        bool inEntryGroup = false;
        const QStringList lines = QString::fromUtf8(contents).split(u'\n');
        for (const QString &rawLine : lines) {
            const QString line = rawLine.trimmed();
            if (line.isEmpty() || line.startsWith(u'#')) {
                continue;
            }
            if (line.startsWith(u'[')) {
                inEntryGroup = line == QStringLiteral("[Desktop Entry]");
                continue;
            }
            const qsizetype equals = line.indexOf(u'=');
            if (!inEntryGroup || equals <= 0) {
                continue;
            }
            const QString key = line.left(equals).trimmed();
            if (key.contains(u'[')) {
                continue;
            }
            entry.m_values.insert(key, unescapeValue(line.mid(equals + 1).trimmed()));
        }
        return entry;
    }

    bool contains(const QString &key) const { return m_values.contains(key); }
    QString value(const QString &key) const { return m_values.value(key); }

    // Nothing when the key is absent or not a truth value; the session then uses its default.
    std::optional<bool> boolean(const QString &key) const
    {
        const QString text = m_values.value(key).toLower();
        if (text == QStringLiteral("true") || text == QStringLiteral("1")) {
            return true;
        }
        if (text == QStringLiteral("false") || text == QStringLiteral("0")) {
            return false;
        }
        return std::nullopt;
    }

    // The string escapes of desktop files: \s, \n, \t, \r and \\. Others stay as written for the
    // Exec quoting rules to read.
    static QString unescapeValue(const QString &value)
    {
        QString result;
        result.reserve(value.size());
        for (qsizetype i = 0; i < value.size(); ++i) {
            const QChar c = value.at(i);
            if (c != u'\\' || i + 1 == value.size()) {
                result += c;
                continue;
            }
            const QChar next = value.at(++i);
            if (next == u's') {
                result += u' ';
            } else if (next == u'n') {
                result += u'\n';
            } else if (next == u't') {
                result += u'\t';
            } else if (next == u'r') {
                result += u'\r';
            } else if (next == u'\\') {
                result += u'\\';
            } else {
                result += c;
                result += next;
            }
        }
        return result;
    }

    static QString escapeValue(const QString &value)
    {
        QString result;
        result.reserve(value.size());
        for (const QChar c : value) {
            if (c == u'\\') {
                result += QStringLiteral("\\\\");
            } else if (c == u'\n') {
                result += QStringLiteral("\\n");
            } else if (c == u'\t') {
                result += QStringLiteral("\\t");
            } else if (c == u'\r') {
                result += QStringLiteral("\\r");
            } else {
                result += c;
            }
        }
        if (result.startsWith(u' ')) {
            result.replace(0, 1, QStringLiteral("\\s"));
        }
        return result;
    }

    // One argument of an Exec value, in double quotes when it holds a reserved character, with
    // '%' doubled so that it is not read as a field code.
    static QString quoteExecArgument(const QString &argument)
    {
        const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
        const bool needsQuotes = argument.isEmpty() || std::any_of(argument.begin(), argument.end(), [&](QChar c) {
                                     return reserved.contains(c);
                                 });
        QString result;
        if (needsQuotes) {
            result += u'"';
            for (const QChar c : argument) {
                if (c == u'"' || c == u'`' || c == u'$' || c == u'\\') {
                    result += u'\\';
                }
                result += c;
            }
            result += u'"';
        } else {
            result = argument;
        }
        result.replace(QStringLiteral("%"), QStringLiteral("%%"));
        return result;
    }

    // The words of an unescaped Exec value. Beside the double quotes of the Desktop Entry rules it
    // takes single quotes and backslashes as a shell would, since GLib parses Exec that way.
    static QStringList splitExec(const QString &command)
    {
        QStringList words;
        QString word;
        bool inWord = false;
        for (qsizetype i = 0; i < command.size(); ++i) {
            const QChar c = command.at(i);
            if (c == u' ' || c == u'\t' || c == u'\n') {
                if (inWord) {
                    words.append(word);
                    word.clear();
                    inWord = false;
                }
                continue;
            }
            inWord = true;
            if (c == u'"') {
                for (++i; i < command.size() && command.at(i) != u'"'; ++i) {
                    const QChar quoted = command.at(i);
                    if (quoted == u'%' && i + 1 < command.size() && command.at(i + 1) == u'%') {
                        word += u'%';
                        ++i;
                        continue;
                    }
                    if (quoted == u'\\' && i + 1 < command.size()) {
                        const QChar next = command.at(i + 1);
                        if (next == u'"' || next == u'`' || next == u'$' || next == u'\\') {
                            word += next;
                            ++i;
                            continue;
                        }
                    }
                    word += quoted;
                }
            } else if (c == u'\'') {
                for (++i; i < command.size() && command.at(i) != u'\''; ++i) {
                    word += command.at(i);
                }
            } else if (c == u'\\' && i + 1 < command.size()) {
                word += command.at(++i);
            } else if (c == u'%' && i + 1 < command.size() && command.at(i + 1) == u'%') {
                word += u'%';
                ++i;
            } else {
                word += c;
            }
        }
        if (inWord) {
            words.append(word);
        }
        return words;
    }

    // Whether the session could start `program`: an absolute path to an executable file, or a
    // name found on PATH.
    static bool programExists(const QString &program)
    {
        if (program.isEmpty()) {
            return false;
        }
        if (program.contains(u'/')) {
            const QFileInfo info(program);
            return info.isAbsolute() && info.isFile() && info.isExecutable();
        }
        return !QStandardPaths::findExecutable(program).isEmpty();
    }

private:
    QHash<QString, QString> m_values;
};

// Creates `folder` and its missing parents, private to the user as XDG asks of folders it creates,
// and says why when one cannot be made.
std::optional<QString> makeFolder(const QString &folder)
{
    const QFileInfo info(folder);
    if (info.isDir()) {
        return std::nullopt;
    }
    const QString parent = info.path();
    if (parent != folder) {
        if (std::optional<QString> failure = makeFolder(parent)) {
            return failure;
        }
    }
    if (::mkdir(QFile::encodeName(folder).constData(), 0700) == 0) {
        return std::nullopt;
    }
    const int error = errno;
    if (error == EEXIST) {
        //: Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no
        //: full stop at the end). %1 is a path.
        return QCoreApplication::translate("XdgAutostart", "“%1” is a file, not a folder")
            .arg(QDir::toNativeSeparators(folder));
    }
    //: Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no
    //: full stop at the end). %1 is a path, %2 the system's reason.
    return QCoreApplication::translate("XdgAutostart", "could not create the folder “%1”: %2")
        .arg(QDir::toNativeSeparators(folder), qt_error_string(error));
}

} // namespace

XdgAutostart::XdgAutostart(QString configFolder, QString executable)
    : m_configFolder(std::move(configFolder))
    , m_executable(std::move(executable))
{}

QString XdgAutostart::entryFileName()
{
    return QStringLiteral("com.inkwarden.menubar.desktop");
}

QString XdgAutostart::defaultConfigFolder()
{
    // XDG_CONFIG_HOME when it is set, else ~/.config.
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

QString XdgAutostart::defaultAutostartFolder()
{
    return defaultConfigFolder() + QStringLiteral("/autostart");
}

QString XdgAutostart::defaultExecutable()
{
    if (!QCoreApplication::instance()) {
        return {};
    }
    QString path = QCoreApplication::applicationFilePath();
    // A package upgrade replaces the program under a running Inkwarden; the kernel then names the
    // old one "… (deleted)", while the new one waits at the same path.
    const QString deleted = QStringLiteral(" (deleted)");
    if (path.endsWith(deleted)) {
        path.chop(deleted.size());
    }
    return path;
}

QString XdgAutostart::autostartFolder() const
{
    return QDir::cleanPath(QDir(m_configFolder).absolutePath() + QStringLiteral("/autostart"));
}

QString XdgAutostart::entryPath() const
{
    return autostartFolder() + u'/' + entryFileName();
}

LoginItemService::Status XdgAutostart::status() const
{
    const QString path = entryPath();
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) {
        return Status::notRegistered;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Status::notFound; // the session cannot read it either; registering again replaces it
    }
    const DesktopEntry entry = DesktopEntry::parse(file.read(MaximumEntrySize));

    // A missing program is checked first: turning the switch on then writes a fresh entry for the
    // running Inkwarden, which helps more than sending the user to settings that cannot fix it.
    if (entry.value(QStringLiteral("Type")) != QStringLiteral("Application")) {
        return Status::notFound;
    }
    const QStringList command = DesktopEntry::splitExec(entry.value(QStringLiteral("Exec")));
    if (command.isEmpty() || !DesktopEntry::programExists(command.first())) {
        return Status::notFound;
    }
    if (entry.contains(QStringLiteral("TryExec"))
        && !DesktopEntry::programExists(entry.value(QStringLiteral("TryExec")))) {
        return Status::notFound;
    }

    // Hidden=true is the XDG way of switching an entry off; GNOME's own switch is the other key.
    if (entry.boolean(QStringLiteral("Hidden")) == true
        || entry.boolean(QStringLiteral("X-GNOME-Autostart-enabled")) == false) {
        return Status::requiresApproval;
    }
    return Status::enabled;
}

std::optional<QString> XdgAutostart::registerItem()
{
    if (m_executable.isEmpty()) {
        //: Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no
        //: full stop at the end).
        return tr("Inkwarden could not tell where its own program is");
    }
    const QFileInfo executable(m_executable);
    if (!executable.isFile() || !executable.isExecutable()) {
        //: Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no
        //: full stop at the end). %1 is a path.
        return tr("the program “%1” is missing or not executable")
            .arg(QDir::toNativeSeparators(executable.absoluteFilePath()));
    }
    if (std::optional<QString> failure = makeFolder(autostartFolder())) {
        return failure;
    }

    // Written whole or not at all, replacing whatever was there: a hand-edited entry that was
    // switched off, or one that names a program that is gone.
    const QString path = entryPath();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        //: Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no
        //: full stop at the end). %1 is a path, %2 the system's reason.
        return tr("could not write “%1”: %2").arg(QDir::toNativeSeparators(path), file.errorString());
    }
    file.write(entryContents(executable.absoluteFilePath()));
    if (!file.commit()) {
        //: Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no
        //: full stop at the end). %1 is a path, %2 the system's reason.
        return tr("could not save “%1”: %2").arg(QDir::toNativeSeparators(path), file.errorString());
    }
    return std::nullopt;
}

std::optional<QString> XdgAutostart::unregisterItem()
{
    const QString path = entryPath();
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) {
        return std::nullopt;
    }
    QFile file(path);
    if (!file.remove()) {
        //: Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no
        //: full stop at the end). %1 is a path, %2 the system's reason.
        return tr("could not remove “%1”: %2").arg(QDir::toNativeSeparators(path), file.errorString());
    }
    return std::nullopt;
}

QByteArray XdgAutostart::entryContents(const QString &executable)
{
    // No NoDisplay: GNOME's startup-applications tools hide such entries, and the user must be able
    // to find this one there. No startup notification either: Inkwarden opens no window at login,
    // so the busy cursor would spin until it timed out. TryExec lets a session skip the entry
    // quietly once the program is gone, instead of failing to start it at every login.
    const QString text = QStringLiteral("# Written by Inkwarden when Open at Login is switched on.\n"
                                        "[Desktop Entry]\n"
                                        "Type=Application\n"
                                        "Version=1.4\n"
                                        "Name=Inkwarden\n"
                                        "Comment=Shows your book royalties in the panel\n")
                         + QStringLiteral("Exec=")
                         + DesktopEntry::escapeValue(DesktopEntry::quoteExecArgument(executable))
                         + QStringLiteral("\nTryExec=") + DesktopEntry::escapeValue(executable)
                         + QStringLiteral("\nIcon=com.inkwarden.menubar\n"
                                          "Terminal=false\n"
                                          "StartupNotify=false\n"
                                          "X-GNOME-Autostart-enabled=true\n");
    return text.toUtf8();
}
