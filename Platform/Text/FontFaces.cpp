// SPDX-License-Identifier: MIT
#include "Text/FontFaces.h"

#include <QCache>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QMutex>
#include <QPointer>
#include <QSet>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <memory>
#include <span>

namespace Pellarvine::detail {

namespace {

// QFontDatabase requires a size, which has no effect here.
constexpr int anySize = 12;

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
using ObjectSet = std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)>;
using FontSet = std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)>;

// Caches the results for names, because programs ask for few of them many times. Cleared when fonts
// are added or removed.
template <typename Value>
class Answers
{
public:
    explicit Answers(Value (*lookUp)(const QString &))
        : m_lookUp(lookUp)
    { }

    Value answer(const QString &name)
    {
        QMutexLocker locker(&m_mutex);
        followApplication();
        if (const Value *const known = m_cache.object(name))
            return *known;
        // Outside the lock: Qt may detect here that its fonts have changed.
        const int generation = m_generation;
        locker.unlock();
        Value value = m_lookUp(name);
        locker.relock();
        if (generation == m_generation)
            m_cache.insert(name, new Value(value));
        return value;
    }

private:
    // A process may create several application objects, one after another.
    void followApplication()
    {
        QGuiApplication *const application = qGuiApp;
        if (!application || m_application == application)
            return;
        m_application = application;
        forget();
        QObject::connect(
                application, &QGuiApplication::fontDatabaseChanged, application,
                [&answers = *this] { answers.fontsChanged(); }, Qt::DirectConnection);
    }

    void fontsChanged()
    {
        const QMutexLocker locker(&m_mutex);
        forget();
    }

    void forget()
    {
        m_cache.clear();
        ++m_generation;
    }

    Value (*m_lookUp)(const QString &);
    QMutex m_mutex;
    QPointer<QObject> m_application;
    QCache<QString, Value> m_cache { 256 };
    int m_generation = 0;
};

// The faces for which fontconfig has this value of `object`. It ignores case.
FontSet listed(const char *object, const QString &value)
{
    const Pattern pattern(FcPatternCreate(), &FcPatternDestroy);
    FcPatternAddString(pattern.get(), object,
                       reinterpret_cast<const FcChar8 *>(value.toUtf8().constData()));
    const ObjectSet objects(FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_WIDTH, nullptr),
                            &FcObjectSetDestroy);
    return { FcFontList(nullptr, pattern.get(), objects.get()), &FcFontSetDestroy };
}

std::span<FcPattern *> patterns(const FontSet &set)
{
    return set ? std::span(set->fonts, std::size_t(set->nfont)) : std::span<FcPattern *>();
}

// All values of the object: a face can have several family names, and a style name for each.
QStringList texts(FcPattern *face, const char *object)
{
    QStringList all;
    FcChar8 *text = nullptr;
    for (int i = 0; FcPatternGetString(face, object, i, &text) == FcResultMatch; ++i)
        all.append(QString::fromUtf8(reinterpret_cast<const char *>(text)));
    return all;
}

QString styleNameIn(const QString &family, FcPattern *face)
{
    const QStringList families = texts(face, FC_FAMILY);
    const QStringList styleNames = texts(face, FC_STYLE);
    const auto isFamily = [&](const QString &name) {
        return name.compare(family, Qt::CaseInsensitive) == 0;
    };
    const auto index = std::ranges::find_if(families, isFamily) - families.begin();
    return styleNames.value(index, styleNames.value(0));
}

// Qt distinguishes families of one name as "Family [foundry]".
QString withoutFoundry(const QString &family)
{
    return family.section(u'[', 0, 0).trimmed();
}

// The faces that Qt can show, with the data that only fontconfig has. Fonts that a program adds
// from memory are unknown to fontconfig.
QList<FontFace> lookUpFaces(const QString &family)
{
    const QString name = withoutFoundry(family);
    const FontSet known = listed(FC_FAMILY, name);
    QList<FontFace> all;
    for (const QString &styleName : QFontDatabase::styles(family)) {
        const QFont font = QFontDatabase::font(family, styleName, anySize);
        FontFace face { { styleName }, font.weight(), font.style() };
        const auto pattern =
                std::ranges::find(patterns(known), styleName, [&](FcPattern *candidate) {
                    return styleNameIn(name, candidate);
                });
        if (pattern != patterns(known).end()) {
            face.styleNames += texts(*pattern, FC_STYLE);
            FcPatternGetInteger(*pattern, FC_WIDTH, 0, &face.width);
        }
        all.append(face);
    }
    return all;
}

QList<FontFace> facesOfFamily(const QString &family)
{
    static Answers<QList<FontFace>> answers(&lookUpFaces);
    return answers.answer(family);
}

// The face in Qt's database; nothing if Qt has omitted it.
std::optional<QFont> fontOf(FcPattern *pattern)
{
    for (const QString &family : texts(pattern, FC_FAMILY)) {
        const QString styleName = styleNameIn(family, pattern);
        for (const FontFace &face : facesOfFamily(family)) {
            if (face.styleNames.first() == styleName)
                return inFace(QFont(QStringList { family }), face);
        }
    }
    return std::nullopt;
}

// Every name of a font, case folded. A query of fontconfig for an unknown name is slow, and a text
// can contain any number of those.
QSet<QString> lookUpNames(const QString &)
{
    QSet<QString> names;
    const Pattern any(FcPatternCreate(), &FcPatternDestroy);
    const ObjectSet objects(FcObjectSetBuild(FC_POSTSCRIPT_NAME, FC_FULLNAME, nullptr),
                            &FcObjectSetDestroy);
    const FontSet all(FcFontList(nullptr, any.get(), objects.get()), &FcFontSetDestroy);
    for (FcPattern *const face : patterns(all)) {
        for (const QString &name : texts(face, FC_POSTSCRIPT_NAME) + texts(face, FC_FULLNAME))
            names.insert(name.toCaseFolded());
    }
    for (const QString &family : QFontDatabase::families()) {
        names.insert(family.toCaseFolded());
        names.insert(withoutFoundry(family).toCaseFolded());
    }
    return names;
}

std::optional<QFont> lookUpFont(const QString &name)
{
    for (const char *const object : { FC_POSTSCRIPT_NAME, FC_FULLNAME }) {
        const FontSet found = listed(object, name);
        for (FcPattern *const pattern : patterns(found)) {
            if (auto font = fontOf(pattern))
                return font;
        }
    }
    const QStringList families = QFontDatabase::families();
    const bool isFamily = std::ranges::any_of(families, [&](const QString &family) {
        return family.compare(name, Qt::CaseInsensitive) == 0
               || withoutFoundry(family).compare(name, Qt::CaseInsensitive) == 0;
    });
    // Qt also lists names that stand for the system's preferred families; they have no faces.
    if (!isFamily || QFontDatabase::styles(name).isEmpty())
        return std::nullopt;
    return QFont(QStringList { name });
}

} // namespace

QList<FontFace> faces(const QFont &font)
{
    return facesOfFamily(QFontInfo(font).family());
}

std::optional<FontFace> shownFace(const QFont &font)
{
    const QFontInfo shown(font);
    const QList<FontFace> all = facesOfFamily(shown.family());
    // One name can mean a face of another family and a face of this one: prefer the other.
    const auto rank = [&](const FontFace &face) {
        const qsizetype index = face.styleNames.indexOf(shown.styleName());
        return index < 0 ? face.styleNames.size() : index;
    };
    const auto found = std::ranges::min_element(all, {}, rank);
    return found == all.end() ? std::nullopt : std::optional(*found);
}

QFont inFace(QFont font, const FontFace &face)
{
    const auto isReached = [&] {
        const auto shown = shownFace(font);
        return shown && shown->styleNames.first() == face.styleNames.first();
    };
    // A style name would select the face, but would also keep it when the weight changes later. Use
    // it last.
    font.setStyleName(QString());
    font.setWeight(QFont::Weight(face.weight));
    font.setStyle(face.style);
    if (!isReached())
        font.setStretch(face.width);
    if (!isReached())
        font.setStyleName(face.styleNames.first());
    return font;
}

std::optional<QFont> fontNamed(const QString &name)
{
    // fontconfig would stop reading at a zero.
    if (name.isEmpty() || name.contains(QChar(0)))
        return std::nullopt;
    static Answers<QSet<QString>> names(&lookUpNames);
    if (!names.answer(QString()).contains(name.toCaseFolded()))
        return std::nullopt;
    static Answers<std::optional<QFont>> answers(&lookUpFont);
    return answers.answer(name);
}

} // namespace Pellarvine::detail
