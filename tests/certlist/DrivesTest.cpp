#include "StoreTest.h"

using Drives = DiskTest;

TEST_F(Drives, HardDiskListIsOneBlankRecord)
{
    ASSERT_EQ(store.GetDriveList(false, true), 0);
    ASSERT_EQ(store.m_nDrvCnt, 1);
    DRIVEINFO drive{};
    drive.nIndex = 9;
    EXPECT_EQ(store.GetDriveInfo(&drive), 0);
    EXPECT_EQ(drive.nIndex, 0);
    EXPECT_STREQ(drive.szDrive, "");
    EXPECT_STREQ(drive.szVolumeName, "");
    EXPECT_STREQ(drive.szTotalName, "");
}

TEST_F(Drives, CopyingOutRefusesNull)
{
    EXPECT_EQ(store.GetDriveInfo(nullptr), QG_NO_MEMORY);
    EXPECT_EQ(store.GetRemDriveInfo(nullptr), QG_NO_MEMORY);
}

TEST_F(Drives, MachineWithoutVfatHasAnEmptyRemovableList)
{
    writeFile(mtab, "/dev/sda1 / ext4 rw 0 0\n");
    EXPECT_EQ(store.GetRemDriveList(false), 0);
    EXPECT_EQ(store.m_nRemDrvCnt, 0);
    EXPECT_TRUE(store.m_pstRemDriveList);
    DRIVEINFO drive{};
    drive.nIndex = 9;
    EXPECT_EQ(store.GetRemDriveInfo(&drive), 0);
    EXPECT_EQ(drive.nIndex, 9);
}

TEST_F(Drives, RemovableDrivesComeInTheOrderOfTheMountTable)
{
    writeFile(mtab, "/dev/sdb1 /media/usb0 vfat rw 0 0\n/dev/sdc1 /media/usb1 VFAT rw 0 0\n");
    EXPECT_EQ(store.GetRemDriveList(true), 0);
    ASSERT_EQ(store.m_nRemDrvCnt, 2);
    DRIVEINFO drives[2] = {};
    EXPECT_EQ(store.GetRemDriveInfo(drives), 0);
    EXPECT_STREQ(drives[0].szDrive, "/media/usb0");
    EXPECT_EQ(drives[1].nIndex, 1);
    EXPECT_STREQ(drives[1].szTotalName, "/usb1 (/media/usb1)");
    store.SetRemDriveInfo(1);
    EXPECT_EQ(store.m_nSelRemDriveIndex, 1);
    EXPECT_STREQ(store.m_szSelRemDrive, "/media/usb1");
}

TEST_F(Drives, ChoosingADriveThatIsNotListedChangesNothing)
{
    store.SetRemDriveInfo(0);
    useDrive();
    const std::string chosen = store.m_szSelRemDrive;
    store.SetRemDriveInfo(1);
    store.SetRemDriveInfo(-1);
    EXPECT_EQ(store.m_szSelRemDrive, chosen);
    EXPECT_EQ(store.m_nSelRemDriveIndex, 0);
}
