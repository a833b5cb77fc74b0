#pragma once

#include <QFont>
#include <QLabel>
#include <QString>

#include <array>

// A word-wrapped plain-text label that remembers its height for the last few
// widths. Every refresh lays the scrolling column out again, and each pass
// asks every wrapped label for its height; recomputing the wrap each time
// cost more than the rest of the refresh. The cache is dropped when the text,
// font, margins or style change.
//
// Its size hints are cheap too. QLabel finds a wrapped label's preferred
// shape by wrapping the text at up to five widths, each a full text layout.
// In a column the width is given and only the height for it matters, so the
// hints ask for two heights instead: one line, and the text wrapped at a
// typical width of `preferredColumns` average characters.
class WrappedLabel : public QLabel
{
    // No Q_OBJECT: it adds no signals or properties, and to tools that list
    // widgets by class (accessibility, the end-to-end probe) it is a QLabel.
public:
    explicit WrappedLabel(QWidget *parent = nullptr);
    explicit WrappedLabel(const QString &text, QWidget *parent = nullptr);

    static constexpr int preferredColumns = 60;
    static constexpr int minimumColumns = 8;

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;

private:
    struct Entry
    {
        int width = -1;
        int height = 0;
    };

    void dropCache() const;
    int frameExtent() const; // margins around the text, horizontally

    mutable QString m_cachedText;
    mutable QFont m_cachedFont;
    mutable int m_cachedMargin = 0;
    mutable int m_cachedIndent = -1;
    mutable bool m_cachedWrap = true;
    mutable std::array<Entry, 6> m_entries;
    mutable std::size_t m_next = 0;
};
