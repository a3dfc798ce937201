// What the update server answers: a document that names the newest version.
#pragma once

class QByteArray;

/// Whether \a answer is a version document that names a newer version than this program is. An
/// answer of any other kind names none.
bool namesNewerVersion(const QByteArray &answer);
