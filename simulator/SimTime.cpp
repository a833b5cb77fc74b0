#include "SimTime.h"

namespace SimTime {

QDateTime now()
{
    const QDateTime moment = QDateTime::currentDateTimeUtc();
    return moment.addMSecs(-moment.time().msec());
}

QString text(const QDateTime &moment)
{
    return moment.toUTC().toString(Qt::ISODate);
}

QString nowText()
{
    return text(now());
}

QDateTime parse(const QString &text)
{
    return QDateTime::fromString(text, Qt::ISODate);
}

} // namespace SimTime
