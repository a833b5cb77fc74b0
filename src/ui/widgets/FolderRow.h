#pragma once

#include <QString>
#include <QWidget>

class ElidedLabel;
class QLabel;
class QToolButton;

// One folder of the folder list: the folder symbol, the path shortened in the
// middle, and its remove button. Made once per listed path and kept while the
// path stays listed, so a long list is never rebuilt for a change elsewhere.
class FolderRow : public QWidget
{
    Q_OBJECT
public:
    explicit FolderRow(const QString &path, QWidget *parent = nullptr);

    const QString &path() const { return m_path; }
    QToolButton *removeButton() const { return m_remove; }
    // Tints both symbols; called when the row is made and when the palette changes.
    void setColors(const QColor &folder, const QColor &remove, qreal devicePixelRatio);

signals:
    void removeRequested(const QString &path);

private:
    QString m_path;
    QLabel *m_icon = nullptr;
    ElidedLabel *m_label = nullptr;
    QToolButton *m_remove = nullptr;
};
