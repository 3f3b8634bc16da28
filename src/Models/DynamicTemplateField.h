// One field of a template, as the operator fills it in.
#pragma once

#include "Models/LayerEnums.h"

namespace tessara {

struct DynamicTemplateField
{
    QString key; // its identity
    TemplateFieldKind kind = TemplateFieldKind::text;
    QString value;

    bool operator==(const DynamicTemplateField &) const = default;
};

} // namespace tessara
