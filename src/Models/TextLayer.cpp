#include "Models/TextLayer.h"

namespace tessara {

TextLayer::TextLayer(const QUuid &id, const QString &name, const QString &text, QPointF position)
    : Layer(id, name, position)
    , m_text(text)
{
}

QFont::Weight TextLayer::resolvedFontWeight(QFont::Weight defaultWeight) const
{
    if (!m_fontWeight)
        return defaultWeight;
    constexpr std::pair<double, QFont::Weight> steps[] = {
        {250, QFont::ExtraLight}, {350, QFont::Light}, {450, QFont::Normal},   {550, QFont::Medium},
        {650, QFont::DemiBold},   {750, QFont::Bold},  {850, QFont::ExtraBold}};
    for (const auto &[limit, weight] : steps) {
        if (*m_fontWeight < limit)
            return weight;
    }
    return QFont::Black;
}

SizedFont TextLayer::resolvedFont(double size, QFont::Weight defaultWeight) const
{
    const QFont::Weight weight = resolvedFontWeight(defaultWeight);
    const QString family = m_fontFamily.value_or(QString()).trimmed();
    if (family.isEmpty())
        return systemFont(size, weight);
    return familyFont(family, size, weight).value_or(systemFont(size, weight));
}

} // namespace tessara
