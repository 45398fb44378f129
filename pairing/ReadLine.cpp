#include "pairing/ReadLine.h"

#include "pairing/DeviceListing.h"
#include "pairing/LeStore.h"
#include "pairing/Log.h"

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <iostream>

namespace vorlink
{
    namespace
    {
        constexpr char function[] = "ReadLine";
        constexpr char listingFile[] = "ble.jpg";

        // The redirection needs a command interpreter: without the user's own AutoRun command (/d), which would run
        // first, might change the folder and takes time.
        constexpr char listDevices[] = R"(C:\Windows\System32\cmd.exe /d /c )"
                                       "C:/Windows/System32/pnputil.exe   /enum-devices >ble.jpg";

        void SleepTimes(int times)
        {
            for (int i = 0; i < times; ++i)
            {
                Sleep(100);
            }
        }

        // Every new piece replaces the entry: of several, the listing's last one stays.
        void Learn(std::string const& name, std::string const& piece)
        {
            VORLINK_LOG(524, function, "find instance vectors[2]  is: %s", piece.c_str());
            if (LeDataHasValue(piece))
            {
                return;
            }
            VORLINK_LOG(527, function, "add new succes  %s", piece.c_str());
            ReplaceLeData(name, piece);
        }
    } // namespace

    bool ReadLine(std::string name)
    {
        SetConsoleOutputCP(CP_UTF8);
        VORLINK_LOG(488, function, "Readline entry");
        // The system needs this long to bring up the new device's nodes.
        Sleep(1000);
        SleepTimes(19);
        WinExec(listDevices, SW_HIDE);
        SleepTimes(8);
        {
            std::ifstream listing(listingFile, std::ios::binary);
            if (listing)
            {
                VORLINK_LOG(503, function, "file exist");
                ReadListing(listing, std::cout,
                            {[](std::string const& line) {
                                 VORLINK_LOG(514, function, "find instance ID  is: %s", line.c_str());
                             },
                             [&](std::string const& piece) { Learn(name, piece); }});
                SaveLeData(leDataFile);
            }
        }
        std::remove(listingFile);
        return true;
    }
} // namespace vorlink
