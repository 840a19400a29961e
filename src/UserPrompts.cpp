#include "UserPrompts.h"

UserPrompts& userPrompts()
{
    static UserPrompts prompts;
    return prompts;
}
