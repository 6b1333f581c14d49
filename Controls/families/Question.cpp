#include "Controls/families/Question.h"

#include "logic/controls/ButtonLogic.h"

bool IsConfirmed(const CONTROLPROPERTIES& control, std::string question, std::string title) {
    return question.empty() || MessageBoxA(control.window, logic::QuestionText(question).c_str(),
                                           title.c_str(), MB_YESNO | MB_DEFBUTTON2) == IDYES;
}
