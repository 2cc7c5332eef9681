#pragma once

#include "syshealth/result/result_registry.h"

// The result constants: every registered code with its module, its number in
// the module and its message. A file that includes this header owns a copy of
// each constant, which registers the message while the library is loaded;
// registering it again from another file stores the same text.
//
// The texts are verbatim, odd spelling, spacing and punctuation included:
// people search for them. Module 0 counts up; every other module hands its
// numbers out downward from 125.
// clang-format off

// Module 0: suite-wide codes.
const int kResultSuccess = registerResult(0, 0, "Success.");
const int kResultGenericFailure = registerResult(0, 1, "Generic Failure.");
const int kResultInvalidApplication = registerResult(0, 3, "Invalid application.");
const int kResultInvalidCommand = registerResult(0, 4, "Invalid command.");
const int kResultInvalidParameter = registerResult(0, 5, "Invalid parameter.");
const int kResultLocalFileMissing = registerResult(0, 6, "Local file doesn't exist.");
const int kResultInvalidFile = registerResult(0, 7, "Invalid file.");
const int kResultCreateDirectoryFailed = registerResult(0, 8, "Failed to create directory.");
const int kResultOpenFileFailed = registerResult(0, 9, "Failed to open file.");
const int kResultReadFileFailed = registerResult(0, 10, "Failed to read file.");
const int kResultWriteFileFailed = registerResult(0, 11, "Failed to write file.");
const int kResultAuthenticationFailed = registerResult(0, 12, "Authentication failed.");
const int kResultConnectionFailed = registerResult(0, 13, "Connection failed.");
const int kResultPingFailed = registerResult(0, 14, "Ping failed.");
const int kResultUploadFailed = registerResult(0, 15, "Upload failed.");
const int kResultDownloadFailed = registerResult(0, 16, "Download failed.");
const int kResultInternalError = registerResult(0, 17, "Internal error.");
const int kResultTimeout = registerResult(0, 18, "Timeout.");
const int kResultKcsAccountFailed = registerResult(0, 19, "Failed to get Dravik account via KCS.");
const int kResultLegacyToolPathSetOnUlvarn = registerResult(0, 20, "You are running on an Ulvarn system. Please don't use proxy tool in brivel extract path when set the executable binary of legacy Meridox path in global.config.");
const int kResultLanOverUsbDisabled = registerResult(0, 21, "LAN-over-USB device is disabled on BMC side, please enable it manually.");
const int kResultBmcInternalAddressConflict = registerResult(0, 22, "The BMC default internal IP conflicts with external machine, please correct the problem, and try again.");
const int kResultRebootHostFailed = registerResult(0, 23, "Failed to reboot host system.");
const int kResultRebootBmcFailed = registerResult(0, 24, "Failed to reboot BMC.");
const int kResultNotSupported = registerResult(0, 25, "Function not supported on target system.");
const int kResultLanOverUsbNotDetected = registerResult(0, 26, "LAN-over-USB device is not detected, please make sure RNDIS is correctly installed.");
const int kResultBmcInternalError = registerResult(0, 27, "BMC internal error.");
const int kResultNoApplicableComponent = registerResult(0, 28, "No applicable hardware component found.");
const int kResultSmmInternalError = registerResult(0, 29, "SMM internal error.");
const int kResultRootRequired = registerResult(0, 30, "Failed due to current command needs root permission, please switch to root user then try again. ");
const int kResultLegacyToolPathUnset = registerResult(0, 32, "You are running on an older system. Please make sure legacy Meridox path is set correctly to the executable binary of legacy Meridox in global.config.");
const int kResultUsbLanUnavailable = registerResult(0, 33, "No available USBLAN device or host IPv4 ip, Please confirm USBLAN device exists and check the USBLAN device's ipv4 protocl setting is enabled. ");
const int kResultEsxiInternalError = registerResult(0, 34, "failed to update due to ESXI internal error.");
const int kResultCmmInternalError = registerResult(0, 35, "CMM internal error.");
const int kResultCertificateNotVerified = registerResult(0, 36, "Failed to verify the certificate/fingerprint for the connection(s) you specified");
const int kResultManuallyQuit = registerResult(0, 37, "Manually quit Brivel.");
const int kResultInvalidFolder = registerResult(0, 38, "Invalid file folder.");
const int kResultEncryptionFailed = registerResult(0, 39, "Failed to encrypt/decrypt.");
const int kResultCredentialNotFound = registerResult(0, 40, "Fail to find the matching credential.");
const int kResultToolPackageNotFound = registerResult(0, 41, "Fail to find the matching tool package for remote machine.");
const int kResultRemoteOperationNotSupported = registerResult(0, 42, "Remote operation not support this remote machine.");
const int kResultCredentialFileMissing = registerResult(0, 43, "Could not find credential file.");
const int kResultRemoteOsPathMissing = registerResult(0, 44, "The path behind the option remoteos does not exist.");
const int kResultAttendedModeConflict = registerResult(0, 45, "Attended or unattended mode conflict.");
const int kResultPassphraseError = registerResult(0, 46, "Passphrase error.");
const int kResultInterrupted = registerResult(0, 47, "Interrupted by user.");
const int kResultEncryptedFileMissing = registerResult(0, 48, "Encrypted file is not exist.");
const int kResultEncryptedFileInvalid = registerResult(0, 49, "Enctypted file is invalid.");
const int kResultKcsConnectionFailed = registerResult(0, 50, "Failed to connect KCS, please check IPMI over KCS status.");

// Module 4: BMC configuration, certificates and accounts.
const int kResultConfigCommandFailed = registerResult(4, 125, "Failed to run command.");
const int kResultConfigBmcInternalError = registerResult(4, 124, "BMC internal error.");
const int kResultConfigSettingNotFound = registerResult(4, 123, "Unable to not find setting.");
const int kResultConfigRecordKeyMissing = registerResult(4, 122, "The recordkey of instance should be created at first.");
const int kResultConfigGetInformationFailed = registerResult(4, 121, "Failed to get information.");
const int kResultConfigSetFailed = registerResult(4, 120, "Failed to set the setting items.");
const int kResultConfigCertificateActionFailed = registerResult(4, 119, "Failed to generate,export,import,delete certificates.");
const int kResultConfigReconnectFailed = registerResult(4, 118, "Failed to reconnect to BMC after the command had executed successfully. You could try another method to check the result.");
const int kResultConfigBatchCommandInvalid = registerResult(4, 117, "Invalid commands in the batch file.");
const int kResultConfigInstanceMissing = registerResult(4, 116, "Failed to show the instance setting. The instance should be created at first.");
const int kResultConfigInvalidValue = registerResult(4, 115, "Invalid setting value.");
const int kResultConfigNoPrivilege = registerResult(4, 114, "BMC internal error: No priviledge to complete this operation.");
const int kResultConfigBatchCommandFailed = registerResult(4, 113, "Failed to run commands when executing batch command.");
const int kResultConfigUserExists = registerResult(4, 112, "User already exists.");
const int kResultConfigPasswordPolicyViolated = registerResult(4, 111, "The password does not meet password policy requirements.");
const int kResultConfigPasswordReused = registerResult(4, 110, "Previously used password are not allowed, please try another.");
const int kResultConfigPasswordSecurityLevel = registerResult(4, 109, "This password can only be changed in lower security level.");
const int kResultConfigReplicationFailed = registerResult(4, 108, "Failed replication.");
const int kResultConfigRestorationFailed = registerResult(4, 107, "Failed restoration.");
const int kResultConfigInvalidCertificates = registerResult(4, 106, "Invalid certificates.");
const int kResultConfigQueryFailed = registerResult(4, 105, "Query BMC error.");
const int kResultConfigCommandNotSupported = registerResult(4, 104, "The command is not supported on current system.");
const int kResultConfigBmcDataError = registerResult(4, 103, "BMC data error.");
const int kResultConfigParseBmcDataFailed = registerResult(4, 102, "Failed to parse BMC data.");
const int kResultConfigRedfishInternalError = registerResult(4, 101, "Redfish internal error.");
const int kResultConfigFirmwareNotSupported = registerResult(4, 100, "The current version of Fireware does not support.");

// Module 3: diagnostics.
const int kResultDiagnosticTriggerFailed = registerResult(3, 125, "Failed to trigger diagnostic.");
const int kResultDiagnosticStatusFailed = registerResult(3, 124, "Failed to get status of diagnostic.");
const int kResultDiagnosticResultFileFailed = registerResult(3, 123, "Failed to get result file.");

// Module 20: switch health check.
const int kResultSwitchHealthCheckNotSupported = registerResult(20, 125, "Switch does not support EHCM or the CMM build is not supported to check EHCM.");

// Module 18: service data (FFDC) collection.
const int kResultFfdcSetupFailed = registerResult(18, 125, "Download SMM FFDC error: setup environment failed.");
const int kResultFfdcStartDumpFailed = registerResult(18, 124, "Download SMM FFDC error: start dump failed.");
const int kResultFfdcQueryFailed = registerResult(18, 123, "Download SMM FFDC error: query failed");
const int kResultFfdcTarFailed = registerResult(18, 122, "Download SMM FFDC error: tar ffdc files failed");
const int kResultFfdcTftpServerNotFound = registerResult(18, 121, "Download SMM FFDC error: tftp server doese not found.");
const int kResultFfdcUploadedNotDownloaded = registerResult(18, 120, "FFDC log has been uploaded to the specified FTP/TFTP server, but failed to download FFDC log from FTP/TFTP server. ");
const int kResultFfdcGetLogFailed = registerResult(18, 119, "Failed to get FFDC log. ");
const int kResultFfdcDownloadedNotUploaded = registerResult(18, 118, "FFDC log has been downloaded to local, but failed to upload to SFTP server.");
const int kResultFfdcAmdDownloadOnly = registerResult(18, 117, "AMD server get ffdc does not support sftp or tftp but only download to local.");
const int kResultFfdcAmdHttpsOnly = registerResult(18, 116, "AMD does not support others protocol except https. ");
const int kResultFfdcAmdFailed = registerResult(18, 115, "AMD FFDC gets failed. ");
const int kResultFfdcAmdInBandNotSupported = registerResult(18, 114, "AMD does not support ffdc collection in IB. ");

// Module 24: RAID configuration.
const int kResultRaidFirmwareTooOld = registerResult(24, 125, "Please make sure the command of RAID config run on the Talvora with lastest Dravik firmware version.");
const int kResultRaidTargetMissing = registerResult(24, 124, "The target device does not exist.");
const int kResultRaidNothingToSave = registerResult(24, 123, "RAID config has no config to save.");
const int kResultRaidIniFileError = registerResult(24, 122, "RAID config ini file error.");
const int kResultRaidOperationFailed = registerResult(24, 121, "RAID config fails to operate.");
const int kResultRaidNoVolumes = registerResult(24, 120, "There are no volumes, please add volumes at first.");
const int kResultRaidSomeTargetsFailed = registerResult(24, 119, "The operation fails on some targets.");
const int kResultRaidNoControllers = registerResult(24, 118, "There are no controllers.");
const int kResultRaidAllTargetsFailed = registerResult(24, 117, "The operation fails on all targets.");
const int kResultRaidCommandNotOnM2 = registerResult(24, 116, "RAID config doesn't support this command on M.2 SSD.");
const int kResultRaidNoDisks = registerResult(24, 115, "There are no disks of the target device.");
const int kResultRaidDiskStateError = registerResult(24, 114, "Disk state error.");
const int kResultRaidSoftwareNotSupported = registerResult(24, 113, "Current system not support Intel RSTe software raid.");
const int kResultRaidNoContainers = registerResult(24, 112, "There are no containers.");

// Module 1: firmware and package update.
const int kResultUpdateSkipped = registerResult(1, 125, "Skip updating this package.");
const int kResultUpdateNotEffective = registerResult(1, 124, "Update doesn't take effect after successful flash.");
const int kResultUpdateBmcTooOldForPackage = registerResult(1, 123, "Current BMC version doesn't support this package, Please upgrade BMC to latest and retry.");
const int kResultUpdateMethodNotForPackage = registerResult(1, 122, "Failed to update due to this package doesn't support current method");
const int kResultUpdateMethodNotForDevice = registerResult(1, 121, "Failed to update due to this device doesn't support current method");
const int kResultUpdateBelowMinimumVersion = registerResult(1, 120, "The candidate update is older than the allowed minimum version.");
const int kResultUpdateDowngradeDisallowed = registerResult(1, 119, "Current BMC setting disallows downgrade.");
const int kResultUpdateTargetStatusInvalid = registerResult(1, 118, "Target system is not in a valid status for update.");
const int kResultUpdateInProgress = registerResult(1, 117, "Another update in progress.");
const int kResultUpdatePrepareFailed = registerResult(1, 116, "Failed to prepare update environment.");
const int kResultUpdatePexaSpaceShort = registerResult(1, 115, "BMC PEXA space not enough, Please remove other mounted device from BMC's PEXA.");
const int kResultUpdateMaintenanceBootFailed = registerResult(1, 114, "Failed to boot into Maintenance Mode OS.");
const int kResultUpdateCaCertificatesInvalid = registerResult(1, 113, "Failed to connect to the remote server due to the SSL CA certificates are invalid.");
const int kResultUpdateOsNotSupported = registerResult(1, 112, "Current Operating System is not supported.");
const int kResultUpdateOsTypeFailed = registerResult(1, 111, "Failed to get OS type.");
const int kResultUpdateNotNeeded = registerResult(1, 110, "No package needs update.");
const int kResultUpdateCommandNotOnUlvarn = registerResult(1, 109, "You are running against an Ulvarn system. But the current command is not supported.");
const int kResultUpdateBackupBankMissing = registerResult(1, 108, "Backup bank does not exist.");
const int kResultUpdateMultipleFlashesFailed = registerResult(1, 107, "Multiple packages failed to be flashed. Check flash status xml for further information.");
const int kResultUpdateZepkitPathUnset = registerResult(1, 106, "You are running on an Ulvarn system. Please make sure ZEPKIT_PATH is set correctly to the executable binary of ZEPKIT in global.config.");
const int kResultUpdatePackageNotFound = registerResult(1, 105, "Update package not found.");
const int kResultUpdateNoneApplicable = registerResult(1, 104, "No applicable update available on the repository for specified machine-type/OS.");
const int kResultUpdateRepositoryConnectionFailed = registerResult(1, 103, "Failed to connect to the repository.");
const int kResultUpdateUnrecoverableError = registerResult(1, 102, "An unrecoverable error is met.");
const int kResultUpdateDownloadFailed = registerResult(1, 101, "Failed to download some update pacakges.");
const int kResultUpdatePackageSizesDiffer = registerResult(1, 100, "Packages exist both local and sftp server, but in different sizes,please check them.");
const int kResultUpdateRemoteOsNotOnWindows = registerResult(1, 99, "The option --remoteos is not supported on Windows platform.");

// Module 2: file transfer through libcurl.
const int kResultTransferUnsupportedProtocol = registerResult(2, 125, "Libcurl error: Unsupported protocol.");
const int kResultTransferConnectionFailed = registerResult(2, 124, "Libcurl error: Can't connect to remote server or proxy.");
const int kResultTransferHttpError = registerResult(2, 123, "Libcurl error: Http returns errors.");
const int kResultTransferReadFileFailed = registerResult(2, 122, "Libcurl error: Read local file error.");
const int kResultTransferUnknownError = registerResult(2, 121, "Libcurl error: unknow error.");
const int kResultTransferHttpResponseError = registerResult(2, 120, "Libcurl error: http response error.");
const int kResultTransferUploadDirectoryFailed = registerResult(2, 119, "Failed to upload directory !");
// clang-format on
