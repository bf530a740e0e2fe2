#pragma once

class QLabel;

/// Makes every label with the property "news" a notification to screen readers: they read it out whenever it comes
/// up, wherever the focus is. To be called before the labels are made.
void installNews();

/// Has such a label read out with the text that it has now, if it is shown.
void readOut(QLabel *label);
