// SPDX-License-Identifier: MIT
#include "outlookpanel.h"

#include "daystrip.h"
#include "importcolours.h"
#include "problemsmodel.h"
#include "textcolours.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QTreeView>

using tadata::CheckedDay;
using tadata::ImportOutlook;
using tadata::ProblemsModel;

namespace {

QLabel* wrappedLabel(const char* name)
{
    auto* const label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

OutlookPanel::OutlookPanel(QWidget* parent)
    : QWidget(parent)
    , m_verdict(wrappedLabel("verdict"))
    , m_strip(new DayStrip)
    , m_legend(new QLabel)
    , m_sentences(wrappedLabel("sentences"))
    , m_tree(new QTreeView)
    , m_problems(new ProblemsModel(this))
{
    m_strip->setObjectName(QStringLiteral("days"));
    m_legend->setObjectName(QStringLiteral("legend"));
    m_legend->setTextFormat(Qt::RichText);
    m_tree->setObjectName(QStringLiteral("problems"));
    m_tree->setAccessibleName(tr("На что посмотреть в файле"));
    m_tree->setHeaderHidden(true);
    m_tree->setModel(m_problems);
    m_tree->setUniformRowHeights(true);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_sentences->setAlignment(Qt::AlignTop | Qt::AlignLeft);

    // A long message must not push the preview out of a small window.
    auto* const words = new QScrollArea;
    auto* const inWords = new QWidget;
    auto* const wordsLayout = new QVBoxLayout(inWords);
    wordsLayout->setContentsMargins({});
    wordsLayout->addWidget(m_verdict);
    wordsLayout->addWidget(m_sentences, 1);
    words->setWidget(inWords);
    words->setWidgetResizable(true);
    words->setFrameShape(QFrame::NoFrame);
    words->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    words->setFocusPolicy(Qt::NoFocus);

    auto* const below = new QHBoxLayout;
    below->addWidget(words, 1);
    below->addWidget(m_tree, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_strip);
    layout->addWidget(m_legend);
    layout->addLayout(below, 1);

    // A click and the arrow keys alike.
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &OutlookPanel::chooseProblem);
    connect(m_tree, &QTreeView::clicked, this, &OutlookPanel::chooseProblem);
    connect(m_strip, &DayStrip::dayChosen, this,
            [this](int day) { m_legend->setText(m_strip->sentenceAt(day).toHtmlEscaped()); });
    showNothing(QString());
}

OutlookPanel::~OutlookPanel() = default;

void OutlookPanel::showVerdict(const QString& text, bool isGood)
{
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText,
                     isGood ? tadata::goodText(colours) : tadata::faultText(colours));
    m_verdict->setPalette(colours);
    m_verdict->setText(text);
    m_verdict->setVisible(!text.isEmpty());
}

void OutlookPanel::showLegend()
{
    QString text;
    for (const auto outcome : {CheckedDay::Outcome::New, CheckedDay::Outcome::Merged,
                               CheckedDay::Outcome::Replaced, CheckedDay::Outcome::Same})
        text += QStringLiteral("<span style=\"color:%1\">■</span> %2&nbsp;&nbsp; ")
                    .arg(tadata::colourOf(outcome, palette()).name(),
                         tadata::titleOf(outcome).toHtmlEscaped());
    text += QStringLiteral("<span style=\"color:%1\">■</span> %2")
                .arg(tadata::faultText(palette()).name(), tr("теряет бары"));
    m_legend->setText(text);
}

void OutlookPanel::showOutlook(const ImportOutlook& outlook,
                               const std::vector<tadata::FileOutlook>& files)
{
    m_isGood = outlook.wouldImport;
    QStringList verdict{m_isGood ? tr("Импорт пройдёт до конца.") : tadata::whyItStops(outlook)};
    if (!outlook.warnings.isEmpty())
        verdict += tadata::whatToHeed(outlook);
    const bool loses = m_isGood && outlook.lost > 0;
    if (loses)
        verdict += tadata::wordsOfLost(outlook.lost) + u'.';
    showVerdict(verdict.join(u'\n'), m_isGood && !loses && outlook.warnings.isEmpty());
    m_strip->setDays(outlook.days);
    const QStringList sentences = tadata::sentencesOf(outlook);
    m_sentences->setText(sentences.isEmpty() ? QString()
                                             : sentences.join(QStringLiteral(".\n")) + u'.');
    m_problems->setOutlooks(files);
    showLegend();
    m_tree->setEnabled(m_problems->rowCount() > 0);
    if (m_problems->rowCount() == 1)
        m_tree->expand(m_problems->index(0, 0));
}

void OutlookPanel::showNothing(const QString& why)
{
    m_isGood = false;
    showVerdict(QString(), false);
    m_strip->setDays({});
    m_problems->setOutlooks({});
    m_tree->setEnabled(false);
    m_sentences->setText(why);
    showLegend();
}

// The last outlook stays in sight, so that nothing flickers while the user chooses.
void OutlookPanel::showWaiting(int percent)
{
    m_isGood = false;
    QPalette colours = palette();
    m_verdict->setPalette(colours);
    m_verdict->setText(tr("Смотрю, что будет сделано: %1 %").arg(percent));
    m_verdict->show();
}

void OutlookPanel::chooseProblem(const QModelIndex& index)
{
    const QVariant line = index.data(ProblemsModel::LineRole);
    if (line.isValid())
        Q_EMIT lineChosen(index.data(ProblemsModel::FileRole).toString(), line.toLongLong());
}
