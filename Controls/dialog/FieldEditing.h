#pragma once

#include "Controls/dialog/ControlDialog.h"

#include <string>

// What is typed into the fields of a dialog and chosen for them. Each change is a property line; what cannot
// be is said in the status text, and the field shows again what the control holds.

std::string LineOf(const DialogField& field, const std::string& value);
// Shows what the control holds.
void RestoreField(const ControlDialog& dialog, const DialogField& field);
// Sends what was typed.
void ApplyField(const ControlDialog& dialog, const DialogField& field);
// By the system's chooser of colours or fonts.
void ChooseValue(const ControlDialog& dialog, const DialogField& field);
// By the pictures whose names begin as the field says.
void ChoosePicture(const ControlDialog& dialog, const DialogField& field);
