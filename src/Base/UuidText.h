// The spelling of ids in files and scripts.
#pragma once

#include <QString>
#include <QUuid>

namespace tessara {

/// Upper case, without braces.
inline QString uuidText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace tessara
