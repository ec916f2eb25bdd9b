// lumoi18n: code sets, languages and collation tables for the string classes.
#ifndef LUMOI18N_H
#define LUMOI18N_H

#define LMI18N_EXPORT __attribute__((visibility("default")))

// Starts (non-zero) or stops (0) the language context. Starts and stops nest:
// the context is up while more starts than stops have been made.
LMI18N_EXPORT void ___LmI18NContext(int start);

// Non-zero while the language context is up.
LMI18N_EXPORT int LmI18NContextActive();

#endif
