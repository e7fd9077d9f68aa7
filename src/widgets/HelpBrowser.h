#pragma once

#include <QTextBrowser>

/** Shows help pages; a page that is not there is told in its place. */
class HelpBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HelpBrowser(QWidget *parent = nullptr);

    QVariant loadResource(int type, const QUrl &name) override;
};
