// SPDX-License-Identifier: MIT
#include "presenter/scriptfile.h"

#include <QFile>

#define TOML_HEADER_ONLY 1
#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

#include <algorithm>
#include <stdexcept>

namespace presenter {

namespace {

using script::Act;

constexpr qint64 kLargestFile = qint64{1024} * 1024;
constexpr int kMostSeconds = 3600;
constexpr char kState[] = "label_FCCU_status";

// The keys that begin an action, and the one that goes with it.
struct Action {
    const char *key;
    const char *second; // empty: none
    Act act;
};
constexpr Action actions[] = {
    {"press", "", Act::Press},     {"inject", "", Act::Inject}, {"switch", "on", Act::Switch},
    {"enter", "text", Act::Enter}, {"wait", "in", Act::Await},  {"send", "", Act::Send},
};

QString textOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

[[noreturn]] void fail(const toml::node &node, const QString &what)
{
    throw std::runtime_error(QStringLiteral("%1: %2").arg(node.source().begin.line).arg(what).toStdString());
}

const toml::node *memberOf(const toml::table &table, const char *key)
{
    return *key ? table.get(key) : nullptr;
}

QString stringOf(const toml::table &table, const char *key)
{
    const toml::node *node = memberOf(table, key);
    if (!node)
        return {};
    if (!node->is_string())
        fail(*node, QStringLiteral("\"%1\" is no text").arg(QLatin1String(key)));
    return textOf(node->as_string()->get());
}

int secondsOf(const toml::table &table, const char *key, int usual)
{
    const toml::node *node = table.get(key);
    if (!node)
        return usual;
    const auto number = node->value<int>().value_or(0);
    if (number < 1 || number > kMostSeconds)
        fail(*node, QStringLiteral("\"%1\" is no whole number from 1 to %2").arg(QLatin1String(key)).arg(kMostSeconds));
    return number;
}

void forbidOthers(const toml::table &table, std::initializer_list<std::string_view> known)
{
    for (const auto &[key, node] : table) {
        if (std::find(known.begin(), known.end(), key.str()) == known.end())
            fail(node, QStringLiteral("unknown key \"%1\"").arg(textOf(key.str())));
    }
}

} // namespace

/// Fills a script from the tables of a file; throws where one is wrong.
class ScriptReader
{
public:
    explicit ScriptReader(ScriptFile &script) : m_script(script) {}

    void read(const toml::table &file)
    {
        forbidOthers(file, {"title", "idle", "step"});
        m_script.m_title = stringOf(file, "title");
        m_script.m_idleSeconds = secondsOf(file, "idle", ScriptFile::kIdleSeconds);
        const toml::array *steps = file["step"].as_array();
        if (!steps || steps->empty())
            fail(file, QStringLiteral("no [[step]]"));
        for (const toml::node &step : *steps) {
            if (!step.is_table())
                fail(step, QStringLiteral("\"step\" is no list of tables"));
            m_script.m_scenes.push_back(scene(*step.as_table()));
        }
    }

private:
    const char *kept(const QString &words)
    {
        m_script.m_words.push_back(words.toUtf8());
        return m_script.m_words.back().constData();
    }

    Scene scene(const toml::table &table)
    {
        forbidOthers(table, {"title", "caption", "page", "seconds", "do"});
        Scene scene;
        scene.title = stringOf(table, "title");
        scene.caption = stringOf(table, "caption");
        scene.seconds = secondsOf(table, "seconds", scene.seconds);
        if (const QString page = stringOf(table, "page"); !page.isEmpty())
            scene.steps.push_back({Act::Page, kept(page)});
        if (const toml::node *deeds = table.get("do")) {
            if (!deeds->is_array())
                fail(*deeds, QStringLiteral("\"do\" is no list"));
            for (const toml::node &deed : *deeds->as_array())
                scene.steps.push_back(step(deed));
        }
        return scene;
    }

    script::Step step(const toml::node &node)
    {
        const toml::table *table = node.as_table();
        for (const Action &action : actions) {
            if (!table || !table->contains(action.key))
                continue;
            forbidOthers(*table, {action.key, action.second});
            return step(*table, action);
        }
        fail(node, QStringLiteral("nothing to do that is known"));
    }

    script::Step step(const toml::table &table, const Action &action)
    {
        const QString first = stringOf(table, action.key);
        if (action.act == Act::Await) {
            const QString widget = stringOf(table, action.second);
            return {Act::Await, widget.isEmpty() ? kState : kept(widget), kept(first)};
        }
        if (action.act == Act::Switch) {
            const auto on = table[action.second].value<bool>();
            if (!on)
                fail(table, QStringLiteral("\"on\" is neither true nor false"));
            return {Act::Switch, kept(first), *on ? "on" : "off"};
        }
        return {action.act, kept(first), kept(stringOf(table, action.second))};
    }

    ScriptFile &m_script;
};

QString ScriptFile::load(const QString &path)
{
    m_scenes.clear();
    m_words.clear();
    m_title.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return path + QStringLiteral(": ") + file.errorString();
    try {
        const QByteArray text = file.read(kLargestFile);
        ScriptReader(*this).read(
            toml::parse(std::string_view(text.constData(), static_cast<std::size_t>(text.size()))));
    } catch (const toml::parse_error &error) {
        return QStringLiteral("%1:%2: %3").arg(path).arg(error.source().begin.line).arg(textOf(error.description()));
    } catch (const std::runtime_error &error) {
        m_scenes.clear();
        return path + QLatin1Char(':') + QString::fromStdString(error.what());
    }
    return {};
}

} // namespace presenter
