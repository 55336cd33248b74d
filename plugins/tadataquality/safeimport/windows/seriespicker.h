// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QWidget>

#include <memory>

class BoardSelectorBox;
class Properties;
class QComboBox;
class QLabel;
class SecuritySelectorBox;
class StockSelectorBox;

/// The boxes in which the user chooses the series of the files, or that the instrument comes from a
/// column of each file, or from its name. User-interface thread.
class SeriesPicker final : public QWidget
{
    Q_OBJECT

public:
    explicit SeriesPicker(QWidget* parent = nullptr);
    ~SeriesPicker() override;

    /// "VENUE/BOARD/SECURITY", whose last code may be "{ticker}" or "{name}"; empty until all of it
    /// is chosen. What is missing is marked in red.
    QString series() const;
    /// Chooses a series as far as the terminal knows it.
    void choose(const QString& series);
    /// Chooses "VENUE/BOARD" as far as the terminal knows it, and no security.
    void chooseVenue(const QString& board);
    /// "VENUE/BOARD"; something of it is empty where that is not chosen.
    QString board() const;
    /// A security, or a column for it, is no longer chosen; tells whether one was.
    bool forgetSecurity();
    /// The security comes from the column of tickers.
    void chooseTickers();
    bool isByFileName() const { return source() == Source::FileName; }

Q_SIGNALS:
    void seriesChanged();

private:
    enum class Source { Chosen, Ticker, FileName };

    Source source() const;
    void follow();
    void chooseBoard(const QString& code);
    void chooseSecurity(const QString& code);

    std::unique_ptr<Properties> m_properties;
    QLabel* m_stockLabel;
    QLabel* m_boardLabel;
    QLabel* m_securityLabel;
    StockSelectorBox* m_stock;
    BoardSelectorBox* m_board;
    QComboBox* m_source;
    SecuritySelectorBox* m_security;
    bool m_isChoosing = false;
};
