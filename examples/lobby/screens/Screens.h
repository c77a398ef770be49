// The screens of the lobby program, in the order in which a client shows them.
#pragma once

#include "Report.h"

void ShowStart(Report& report);     ///< opens the log, prints the time
void ShowSignIn(Report& report);    ///< checks account names and passwords
void ShowChat(Report& report);      ///< masks a chat transcript
void ShowPlayers(Report& report);   ///< ranks and levels of a list of players
void ShowTasks(Report& report);     ///< names of the games' automatic tasks
void ShowMessages(Report& report);  ///< writes and reads a small stream and a key-value text
void ShowRecords(Report& report);   ///< applies the rules to the records in inbox/, writes answers to outbox/
void ShowBoard(Report& report);     ///< reads the notice board and spins its prize wheel
void ShowWorker(Report& report);    ///< scans the chat on a worker thread
void ShowAdapters(Report& report);  ///< lists the machine's network adapters
