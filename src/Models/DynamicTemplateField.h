// One field of a template, as the operator fills it in.
#pragma once

#include "Models/LayerEnums.h"

namespace tessara {

struct DynamicTemplateField
{
    Q_GADGET
    Q_PROPERTY(QString key MEMBER key FINAL)
    Q_PROPERTY(tessara::TemplateFieldKind kind MEMBER kind FINAL)
    Q_PROPERTY(QString value MEMBER value FINAL)

public:
    QString key; // its identity
    TemplateFieldKind kind = TemplateFieldKind::text;
    QString value;

    bool operator==(const DynamicTemplateField &) const = default;
};

} // namespace tessara
