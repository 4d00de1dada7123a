#pragma once

#include "core/look/Appearance.h"

#include <QObject>

class QDBusVariant;

/// Follows the desktop's light or dark look, now and whenever the user changes it.
class SystemScheme : public QObject {
    Q_OBJECT
  public:
    SystemScheme();

  private slots:
    void portalChanged(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    static void follow(Appearance::Scheme scheme);
};
