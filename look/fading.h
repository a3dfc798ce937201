// How what cannot be used looks.
#pragma once

class QWidget;

/// Has \a widget look faded for as long as it is disabled.
void fadeWhileDisabled(QWidget &widget);
