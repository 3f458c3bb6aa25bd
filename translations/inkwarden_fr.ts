<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>AppUpdates</name>
    <message>
        <source>The downloaded installer could not be found. Download the update again.</source>
        <translation>L’installateur téléchargé est introuvable. Téléchargez à nouveau la mise à jour.</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <extracomment>The update button while the new version downloads</extracomment>
        <translation>Téléchargement…</translation>
    </message>
    <message>
        <source>Open installer</source>
        <extracomment>The update button once the installer is downloaded: it opens the installer</extracomment>
        <translation>Ouvrir l’installateur</translation>
    </message>
    <message>
        <source>Update</source>
        <extracomment>The button that downloads a newer version of Inkwarden</extracomment>
        <translation>Mettre à jour</translation>
    </message>
    <message>
        <source>Inkwarden could not determine the latest available version.</source>
        <translation>Inkwarden n’a pas pu déterminer la dernière version disponible.</translation>
    </message>
    <message>
        <source>Update check failed: %1</source>
        <extracomment>%1 is the reason, such as a network error</extracomment>
        <translation>Échec de la vérification des mises à jour&#xa0;: %1</translation>
    </message>
    <message>
        <source>Enter a valid server URL in Settings before downloading an update.</source>
        <translation>Saisissez une URL de serveur valide dans les paramètres avant de télécharger une mise à jour.</translation>
    </message>
    <message>
        <source>Downloading update… You can keep using Inkwarden.</source>
        <translation>Téléchargement de la mise à jour… Vous pouvez continuer à utiliser Inkwarden.</translation>
    </message>
    <message>
        <source>Update failed: %1</source>
        <extracomment>%1 is the reason, such as a network error</extracomment>
        <translation>Échec de la mise à jour&#xa0;: %1</translation>
    </message>
    <message>
        <source>Update downloaded. Opening the installer…</source>
        <translation>Mise à jour téléchargée. Ouverture de l’installateur…</translation>
    </message>
    <message>
        <source>Opening the installer…</source>
        <translation>Ouverture de l’installateur…</translation>
    </message>
    <message>
        <source>Enter a valid server URL in Settings before opening the dashboard.</source>
        <translation>Saisissez une URL de serveur valide dans les paramètres avant d’ouvrir le tableau de bord.</translation>
    </message>
    <message>
        <source>Inkwarden could not open the dashboard URL.</source>
        <translation>Inkwarden n’a pas pu ouvrir l’URL du tableau de bord.</translation>
    </message>
</context>
<context>
    <name>BrowserSignIn</name>
    <message>
        <source>Enter a valid Inkwarden server URL.</source>
        <translation>Saisissez une URL de serveur Inkwarden valide.</translation>
    </message>
    <message>
        <source>Inkwarden received an invalid sign-in response.</source>
        <translation>Inkwarden a reçu une réponse de connexion non valide.</translation>
    </message>
    <message>
        <source>This sign-in response does not match the current request. Please try again.</source>
        <translation>Cette réponse de connexion ne correspond pas à la demande en cours. Veuillez réessayer.</translation>
    </message>
</context>
<context>
    <name>ConnectView</name>
    <message>
        <source>See your latest royalties from the menu bar.</source>
        <translation>Suivez vos dernières redevances depuis le panneau.</translation>
    </message>
    <message>
        <source>Connect manually</source>
        <extracomment>Toggle that unfolds the form for typing a server address and an API key by hand</extracomment>
        <translation>Connexion manuelle</translation>
    </message>
    <message>
        <source>Server</source>
        <extracomment>Field title above the address of the Inkwarden server</extracomment>
        <translation>Serveur</translation>
    </message>
    <message>
        <source>Server URL</source>
        <translation>URL du serveur</translation>
    </message>
    <message>
        <source>API key</source>
        <extracomment>Field title above the key that gives Inkwarden access to the account</extracomment>
        <translation>Clé d’API</translation>
    </message>
    <message>
        <source>Inkwarden API key</source>
        <translation>Clé d’API Inkwarden</translation>
    </message>
    <message>
        <source>Browser sign-in fills the API key automatically. Manual entry remains available whenever you need it.</source>
        <translation>La connexion par le navigateur renseigne automatiquement la clé d’API. La saisie manuelle reste disponible à tout moment.</translation>
    </message>
    <message>
        <source>Quit</source>
        <extracomment>Button that quits Inkwarden</extracomment>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Connect to Inkwarden</source>
        <extracomment>The sign-in screen of the popover, as screen readers name it</extracomment>
        <translation>Se connecter à Inkwarden</translation>
    </message>
</context>
<context>
    <name>ConnectViewModel</name>
    <message>
        <source>Waiting for browser sign-in…</source>
        <extracomment>Title of the sign-in button while the browser sign-in is under way.</extracomment>
        <translation>En attente du navigateur…</translation>
    </message>
    <message>
        <source>Sign in with Inkwarden</source>
        <extracomment>Button that signs in through the browser.</extracomment>
        <translation>Se connecter avec Inkwarden</translation>
    </message>
    <message>
        <source>Connecting…</source>
        <extracomment>Title of the connect button while the API key is being checked.</extracomment>
        <translation>Connexion…</translation>
    </message>
    <message>
        <source>Connect with API key</source>
        <extracomment>Button that connects with the API key typed in above it.</extracomment>
        <translation>Se connecter avec la clé d’API</translation>
    </message>
    <message>
        <source>Version %1</source>
        <extracomment>Under the sign-in form: %1 is Inkwarden&apos;s version number (&quot;1.4.0&quot;).</extracomment>
        <translation>Version %1</translation>
    </message>
</context>
<context>
    <name>ConnectionSession</name>
    <message>
        <source>No internet connection. Inkwarden will refresh automatically when it returns.</source>
        <translation>Pas de connexion Internet. Inkwarden s’actualisera automatiquement dès qu’elle sera rétablie.</translation>
    </message>
    <message>
        <source>This API key does not have access to any accounts.</source>
        <translation>Cette clé d’API n’a accès à aucun compte.</translation>
    </message>
    <message>
        <source>Not refreshed yet</source>
        <extracomment>When the royalty figures were last fetched: never yet</extracomment>
        <translation>Pas encore actualisé</translation>
    </message>
    <message>
        <source>Refreshed just now</source>
        <extracomment>When the royalty figures were last fetched</extracomment>
        <translation>Actualisé à l’instant</translation>
    </message>
    <message>
        <source>Refreshed %1s ago</source>
        <extracomment>When the royalty figures were last fetched: %1 seconds ago (&quot;s&quot; abbreviates seconds)</extracomment>
        <translation>Actualisé il y a %1&#xa0;s</translation>
    </message>
    <message>
        <source>Refreshed %1m ago</source>
        <extracomment>When the royalty figures were last fetched: %1 minutes ago (&quot;m&quot; abbreviates minutes)</extracomment>
        <translation>Actualisé il y a %1&#xa0;min</translation>
    </message>
    <message>
        <source>Refreshed %1h ago</source>
        <extracomment>When the royalty figures were last fetched: %1 hours ago (&quot;h&quot; abbreviates hours)</extracomment>
        <translation>Actualisé il y a %1&#xa0;h</translation>
    </message>
    <message>
        <source>Refreshed %1h %2m ago</source>
        <extracomment>When the royalty figures were last fetched: %1 hours and %2 minutes ago (&quot;h&quot; and &quot;m&quot; abbreviate hours and minutes)</extracomment>
        <translation>Actualisé il y a %1&#xa0;h %2&#xa0;min</translation>
    </message>
    <message>
        <source>Waiting for internet…</source>
        <extracomment>Instead of the time of the next refresh, while there is no network</extracomment>
        <translation>En attente du réseau…</translation>
    </message>
    <message>
        <source>Refreshing now…</source>
        <extracomment>Instead of the time of the next refresh, while the figures are being fetched</extracomment>
        <translation>Actualisation en cours…</translation>
    </message>
    <message>
        <source>Automatic refresh not scheduled</source>
        <translation>Actualisation automatique non planifiée</translation>
    </message>
    <message>
        <source>Next refresh in %1</source>
        <extracomment>%1 is a countdown, such as 04:59 or 1:04:59</extracomment>
        <translation>Prochaine actualisation dans %1</translation>
    </message>
    <message>
        <source>Refresh queued…</source>
        <extracomment>Instead of the time of the next refresh, when it is due and waits its turn</extracomment>
        <translation>Actualisation en attente…</translation>
    </message>
</context>
<context>
    <name>DashboardView</name>
    <message>
        <source>Settings</source>
        <extracomment>Tool tip of the gear button that opens the settings page</extracomment>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Period</source>
        <extracomment>Accessible name of the picker choosing the time span of the royalty figures (Today, This Month, ...)</extracomment>
        <translation>Période</translation>
    </message>
    <message>
        <source>SALES BREAKDOWN</source>
        <extracomment>Section heading above the royalties per book format; shown in capital letters</extracomment>
        <translation>VENTES PAR FORMAT</translation>
    </message>
    <message>
        <source>Refresh</source>
        <extracomment>Footer button that fetches the royalties again now</extracomment>
        <translation>Actualiser</translation>
    </message>
    <message>
        <source>Open My Dashboard</source>
        <extracomment>Footer button that opens the author&apos;s dashboard on the Inkwarden website</extracomment>
        <translation>Tableau de bord</translation>
    </message>
    <message>
        <source>Quit</source>
        <extracomment>Footer button that quits Inkwarden</extracomment>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Royalties</source>
        <extracomment>The dashboard screen of the popover, as screen readers name it</extracomment>
        <translation>Redevances</translation>
    </message>
    <message>
        <source>Server, account, figures, notifications and updates</source>
        <extracomment>What the gear button does, for screen readers</extracomment>
        <translation>Serveur, compte, chiffres, notifications et mises à jour</translation>
    </message>
</context>
<context>
    <name>DashboardViewModel</name>
    <message numerus="yes">
        <source>Period selection available in %1s</source>
        <extracomment>Under the period picker while requests must wait: %1 is a number of seconds, &quot;s&quot; their symbol.</extracomment>
        <translation>
            <numerusform>Choix de la période possible dans %1&#xa0;s</numerusform>
            <numerusform>Choix de la période possible dans %1&#xa0;s</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DisplayedRoyalty</name>
    <message>
        <source>Gross royalties</source>
        <extracomment>The royalties before spending is taken off, as the headline figure (a choice in Settings)</extracomment>
        <translation>Redevances brutes</translation>
    </message>
    <message>
        <source>Net royalties</source>
        <extracomment>The royalties after spending is taken off, as the headline figure (a choice in Settings)</extracomment>
        <translation>Redevances nettes</translation>
    </message>
</context>
<context>
    <name>EarningsCard</name>
    <message>
        <source>Refreshing</source>
        <extracomment>Said by screen readers as a refresh of the royalties begins
----------
Accessible name of the small spinner shown while the royalties are fetched</extracomment>
        <translation>Actualisation</translation>
    </message>
    <message>
        <source>Refreshed. %1: %2</source>
        <extracomment>Said by screen readers when new figures arrived: &quot;Refreshed. Gross royalties: $1,234.50&quot;</extracomment>
        <translation>Actualisé. %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>The headline for screen readers: the figure&apos;s name (&quot;Gross royalties&quot;), then the amount</extracomment>
        <translation>%1&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>FinancialRowsModel</name>
    <message>
        <source>Gross royalties</source>
        <extracomment>Row of the popover&apos;s figures: royalties before ad spend and expenses.</extracomment>
        <translation>Redevances brutes</translation>
    </message>
    <message>
        <source>Ad spend &amp; expenses</source>
        <extracomment>Row of the popover&apos;s figures: what was spent on ads and other expenses in the period.</extracomment>
        <translation>Publicité et dépenses</translation>
    </message>
    <message>
        <source>Net royalties</source>
        <extracomment>Row of the popover&apos;s figures: royalties after ad spend and expenses.</extracomment>
        <translation>Redevances nettes</translation>
    </message>
</context>
<context>
    <name>FormatSalesRow</name>
    <message>
        <source>%1, %2, %3</source>
        <extracomment>Accessible name of a sales breakdown row: format, units sold, royalties</extracomment>
        <translation>%1, %2, %3</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <extracomment>Accessible name of a sales breakdown row without royalties: format, units sold</extracomment>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>FreedesktopNotifications</name>
    <message>
        <source>Open Inkwarden</source>
        <extracomment>The notification&apos;s action (a button, or a click on it with some desktops): shows the popover.</extracomment>
        <translation>Ouvrir Inkwarden</translation>
    </message>
</context>
<context>
    <name>InstallerDownloader</name>
    <message>
        <source>The request timed out.</source>
        <translation>Le délai de la requête a expiré.</translation>
    </message>
    <message>
        <source>The latest Inkwarden update could not be downloaded.</source>
        <translation>Impossible de télécharger la dernière mise à jour d’Inkwarden.</translation>
    </message>
    <message>
        <source>The update could not be saved: %1</source>
        <extracomment>%1 is the system&apos;s reason why the file could not be written</extracomment>
        <translation>Impossible d’enregistrer la mise à jour&#xa0;: %1</translation>
    </message>
    <message>
        <source>The folder %1 could not be created.</source>
        <extracomment>%1 is the path of a folder</extracomment>
        <translation>Impossible de créer le dossier %1.</translation>
    </message>
    <message>
        <source>The earlier download at %1 could not be replaced.</source>
        <extracomment>%1 is the path of an installer downloaded before</extracomment>
        <translation>Impossible de remplacer le fichier téléchargé précédemment (%1).</translation>
    </message>
    <message>
        <source>The update could not be moved to %1: %2</source>
        <extracomment>%1 is the path the installer goes to, %2 the system&apos;s reason why it could not</extracomment>
        <translation>Impossible de déplacer la mise à jour vers %1&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>LinuxDesktopServices</name>
    <message>
        <source>The file could not be found.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open (follows &quot;The system did not open the installer: &quot;).</extracomment>
        <translation>Le fichier est introuvable.</translation>
    </message>
    <message>
        <source>A program needed to open the file is not installed.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open (follows &quot;The system did not open the installer: &quot;).</extracomment>
        <translation>Un programme nécessaire pour ouvrir le fichier n’est pas installé.</translation>
    </message>
    <message>
        <source>No application could open the file.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open (follows &quot;The system did not open the installer: &quot;).</extracomment>
        <translation>Aucune application n’a pu ouvrir le fichier.</translation>
    </message>
    <message>
        <source>The file opener %1 ended with exit status %2.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open: %1 is a program&apos;s name (&quot;xdg-open&quot;), %2 the number it ended with.</extracomment>
        <translation>L’outil d’ouverture de fichiers %1 s’est terminé avec le code de sortie %2.</translation>
    </message>
    <message>
        <source>No file was given to open.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open (follows &quot;The system did not open the installer: &quot;).</extracomment>
        <translation>Aucun fichier à ouvrir n’a été indiqué.</translation>
    </message>
    <message>
        <source>The file “%1” does not exist.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open: %1 is the file&apos;s name.</extracomment>
        <translation>Le fichier «&#xa0;%1&#xa0;» n’existe pas.</translation>
    </message>
    <message>
        <source>The file opener %1 could not be started: %2</source>
        <extracomment>Why a downloaded update&apos;s installer did not open: %1 is a program&apos;s name (&quot;gio&quot;), %2 Qt&apos;s reason.</extracomment>
        <translation>Impossible de lancer l’outil d’ouverture de fichiers %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>The file opener %1 stopped unexpectedly.</source>
        <extracomment>Why a downloaded update&apos;s installer did not open: %1 is a program&apos;s name (&quot;gio&quot;).</extracomment>
        <translation>L’outil d’ouverture de fichiers %1 s’est arrêté de manière inattendue.</translation>
    </message>
    <message>
        <source>No program that opens files is installed: Inkwarden needs gio (package libglib2.0-bin) or xdg-open (package xdg-utils).</source>
        <extracomment>Why a downloaded update&apos;s installer did not open. Keep the program and package names as they are.</extracomment>
        <translation>Aucun programme d’ouverture de fichiers n’est installé&#xa0;: Inkwarden a besoin de gio (paquet libglib2.0-bin) ou de xdg-open (paquet xdg-utils).</translation>
    </message>
</context>
<context>
    <name>MenuContentView</name>
    <message>
        <source>Later</source>
        <extracomment>Button of the update prompt: do not download the new version now</extracomment>
        <translation>Plus tard</translation>
    </message>
    <message>
        <source>Download Update</source>
        <extracomment>Button of the update prompt</extracomment>
        <translation>Télécharger</translation>
    </message>
</context>
<context>
    <name>MetricRow</name>
    <message>
        <source>%1: %2</source>
        <extracomment>Accessible name of a financial figure: its name, then the amount</extracomment>
        <translation>%1&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>PanelStatusBuilder</name>
    <message>
        <source>Inkwarden Royalties</source>
        <extracomment>Heading of the panel icon&apos;s tool tip.</extracomment>
        <translation>Redevances Inkwarden</translation>
    </message>
    <message>
        <source>Not signed in</source>
        <extracomment>Line of the panel icon&apos;s tool tip, also said by its name for screen readers, while no account is connected.</extracomment>
        <translation>Non connecté</translation>
    </message>
    <message>
        <source>Not refreshed yet</source>
        <extracomment>In the panel icon&apos;s tool tip after the figure, and in its name for screen readers: no royalties were fetched yet.</extracomment>
        <translation>Pas encore actualisé</translation>
    </message>
    <message>
        <source>Refreshed at %1</source>
        <extracomment>In the panel icon&apos;s tool tip, after the figure: %1 is a time of today (&quot;14:05&quot;).</extracomment>
        <translation>Actualisé à %1</translation>
    </message>
    <message>
        <source>Refreshed %1</source>
        <extracomment>In the panel icon&apos;s tool tip, after the figure: %1 is a date and time before today (&quot;3/4/25 14:05&quot;).</extracomment>
        <translation>Actualisé le %1</translation>
    </message>
    <message>
        <source>%1: %2 · %3</source>
        <extracomment>Line of the panel icon&apos;s tool tip: %1 is the period the figure covers (&quot;Today&quot;), %2 the figure shown in the panel (&quot;$1,235&quot;), %3 when it was refreshed (&quot;Refreshed at 14:05&quot;). The dot separates the last two.</extracomment>
        <translation>%1&#xa0;: %2 · %3</translation>
    </message>
    <message>
        <source>Inkwarden: %1 %2</source>
        <extracomment>The panel icon&apos;s name, as screen readers read it: %1 is the period the figure covers (&quot;Today&quot;), %2 the figure shown in the panel (&quot;$1,235&quot;, or &quot;$•••&quot; while amounts are hidden).</extracomment>
        <translation>Inkwarden&#xa0;: %1 %2</translation>
    </message>
    <message>
        <source>Inkwarden: %1</source>
        <extracomment>The panel icon&apos;s name, as screen readers read it, while it shows no figure: %1 says why (&quot;Not signed in&quot;, &quot;Not refreshed yet&quot;).</extracomment>
        <translation>Inkwarden&#xa0;: %1</translation>
    </message>
</context>
<context>
    <name>PlatformTexts</name>
    <message>
        <source>Could not save the API key in the keyring (%1).</source>
        <extracomment>%1 is the error code the keyring returned</extracomment>
        <translation>Impossible d’enregistrer la clé d’API dans le trousseau de clés (%1).</translation>
    </message>
    <message>
        <source>Unlock your keyring to show your royalties.</source>
        <translation>Déverrouillez votre trousseau de clés pour afficher vos redevances.</translation>
    </message>
    <message>
        <source>Your keyring is not answering. Inkwarden will read your API key as soon as it does.</source>
        <translation>Votre trousseau de clés ne répond pas. Inkwarden lira votre clé d’API dès qu’il répondra.</translation>
    </message>
    <message>
        <source>Your keyring is locked, so the API key could not be saved. Unlock your keyring, then sign in again.</source>
        <translation>Votre trousseau de clés est verrouillé&#xa0;: impossible d’enregistrer la clé d’API. Déverrouillez votre trousseau, puis reconnectez-vous.</translation>
    </message>
    <message>
        <source>My Account → Settings → API Access · Stored securely in your system keyring</source>
        <extracomment>Under the API key field. &quot;My Account&quot;, &quot;Settings&quot; and &quot;API Access&quot; are the pages of the Inkwarden website where the key is found, each arrow leading to the next</extracomment>
        <translation>Mon compte → Paramètres → Accès API · Conservée en sécurité dans le trousseau de clés du système</translation>
    </message>
    <message>
        <source>Show in Files</source>
        <extracomment>A button that shows the downloaded installer in the file manager</extracomment>
        <translation>Afficher dans le dossier</translation>
    </message>
    <message>
        <source>The update is downloaded. Open it from your file manager to continue.</source>
        <translation>La mise à jour est téléchargée. Ouvrez-la depuis votre gestionnaire de fichiers pour continuer.</translation>
    </message>
    <message>
        <source>The system did not open the installer: %1</source>
        <extracomment>%1 is the system&apos;s reason</extracomment>
        <translation>Le système n’a pas ouvert l’installateur&#xa0;: %1</translation>
    </message>
    <message>
        <source>Installer opened. If it is not visible, choose Show in Files.</source>
        <extracomment>&quot;Show in Files&quot; is the button of that name</extracomment>
        <translation>Installateur ouvert. S’il n’est pas visible, choisissez «&#xa0;Afficher dans le dossier&#xa0;».</translation>
    </message>
    <message>
        <source>Download the latest version now?</source>
        <translation>Télécharger la dernière version maintenant&#x202f;?</translation>
    </message>
    <message>
        <source>Approval is required in your system&apos;s autostart settings</source>
        <extracomment>Under the setting that starts Inkwarden when the user logs in</extracomment>
        <translation>Une autorisation est requise dans les paramètres de démarrage automatique du système</translation>
    </message>
    <message>
        <source>Launch Inkwarden after you sign in to or restart your computer</source>
        <extracomment>Under the setting that starts Inkwarden when the user logs in</extracomment>
        <translation>Lancer Inkwarden à l’ouverture de session ou au redémarrage de l’ordinateur</translation>
    </message>
    <message>
        <source>Inkwarden is registered, but the system has not approved it. It will not open at login until you enable it in your system&apos;s autostart settings.</source>
        <translation>Inkwarden est enregistré, mais le système ne l’a pas autorisé. Il ne s’ouvrira pas à la connexion tant que vous ne l’aurez pas activé dans les paramètres de démarrage automatique du système.</translation>
    </message>
    <message>
        <source>Open Autostart Settings</source>
        <extracomment>A button that opens the desktop&apos;s settings of the programs started at login</extracomment>
        <translation>Ouvrir les paramètres de démarrage</translation>
    </message>
    <message>
        <source>The system could not enable Open at Login. Make sure Inkwarden is installed, then enable it in your system&apos;s autostart settings.</source>
        <extracomment>&quot;Open at Login&quot; is starting Inkwarden when the user logs in</extracomment>
        <translation>Le système n’a pas pu activer l’ouverture à la connexion. Vérifiez qu’Inkwarden est installé, puis activez-la dans les paramètres de démarrage automatique du système.</translation>
    </message>
    <message>
        <source>Could not update Open at Login: %1. Make sure Inkwarden is installed, then try again.</source>
        <extracomment>&quot;Open at Login&quot; is starting Inkwarden when the user logs in; %1 is the system&apos;s reason</extracomment>
        <translation>Impossible de modifier l’ouverture à la connexion&#xa0;: %1. Vérifiez qu’Inkwarden est installé, puis réessayez.</translation>
    </message>
</context>
<context>
    <name>PopoverWindow</name>
    <message>
        <source>Inkwarden Royalties</source>
        <extracomment>The popover&apos;s window, as screen readers announce it as it opens.</extracomment>
        <translation>Redevances Inkwarden</translation>
    </message>
</context>
<context>
    <name>RoyaltiesError</name>
    <message numerus="yes">
        <source>Please wait %1 seconds before requesting royalties again.</source>
        <extracomment>The server asked to wait before the next request; %1 is a number of seconds. English keeps &quot;seconds&quot; even for 1; other languages use their plural forms</extracomment>
        <translation>
            <numerusform>Veuillez patienter %1 seconde avant de redemander les redevances.</numerusform>
            <numerusform>Veuillez patienter %1 secondes avant de redemander les redevances.</numerusform>
        </translation>
    </message>
    <message>
        <source>Enter a valid server URL, including http:// or https://.</source>
        <translation>Saisissez une URL de serveur valide, avec http:// ou https://.</translation>
    </message>
    <message>
        <source>Enter your Inkwarden API key.</source>
        <translation>Saisissez votre clé d’API Inkwarden.</translation>
    </message>
    <message>
        <source>Inkwarden returned an unexpected response.</source>
        <translation>Inkwarden a renvoyé une réponse inattendue.</translation>
    </message>
</context>
<context>
    <name>RoyaltiesService</name>
    <message>
        <source>Connection closed</source>
        <extracomment>A network error: the server closed the connection</extracomment>
        <translation>Connexion fermée</translation>
    </message>
    <message>
        <source>The request timed out.</source>
        <translation>Le délai de la requête a expiré.</translation>
    </message>
    <message>
        <source>Server returned HTTP %1.</source>
        <extracomment>%1 is an HTTP status code, such as 500</extracomment>
        <translation>Le serveur a renvoyé le code HTTP %1.</translation>
    </message>
</context>
<context>
    <name>RoyaltiesStore</name>
    <message>
        <source>Inkwarden could not read its settings file and started with the default settings. The old file was kept as %1.</source>
        <extracomment>%1 is the path of the unreadable settings file, renamed and kept aside</extracomment>
        <translation>Inkwarden n’a pas pu lire son fichier de paramètres et a démarré avec les paramètres par défaut. L’ancien fichier a été conservé sous %1.</translation>
    </message>
</context>
<context>
    <name>RoyaltyAlerts</name>
    <message>
        <source>New royalties</source>
        <extracomment>The title of a desktop notification when the amounts are hidden</extracomment>
        <translation>Nouvelles redevances</translation>
    </message>
    <message>
        <source>+%1 in royalties</source>
        <extracomment>The title of a desktop notification; %1 is the amount earned since the last refresh, such as $12.50</extracomment>
        <translation>+%1 de redevances</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>The body of a desktop notification: %1 is the period, such as &quot;Today&quot;, %2 its royalties</extracomment>
        <translation>%1&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>RoyaltyPeriod</name>
    <message>
        <source>Today</source>
        <extracomment>The period of royalty figures shown: the current day</extracomment>
        <translation>Aujourd’hui</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <extracomment>The period of royalty figures shown: the day before today</extracomment>
        <translation>Hier</translation>
    </message>
    <message>
        <source>This Month</source>
        <extracomment>The period of royalty figures shown: the current calendar month so far</extracomment>
        <translation>Ce mois-ci</translation>
    </message>
</context>
<context>
    <name>SalesBreakdownMetric</name>
    <message>
        <source>Paid ebooks</source>
        <extracomment>A row of the sales breakdown: ebooks sold for money</extracomment>
        <translation>E-books payants</translation>
    </message>
    <message>
        <source>Paperbacks</source>
        <extracomment>A row of the sales breakdown: paperback copies sold</extracomment>
        <translation>Livres brochés</translation>
    </message>
    <message>
        <source>Hardcovers</source>
        <extracomment>A row of the sales breakdown: hardcover copies sold</extracomment>
        <translation>Livres reliés</translation>
    </message>
    <message>
        <source>Audiobooks</source>
        <extracomment>A row of the sales breakdown: audiobooks sold</extracomment>
        <translation>Livres audio</translation>
    </message>
    <message>
        <source>Expanded distribution</source>
        <extracomment>A row of the sales breakdown: print copies sold through other stores and libraries</extracomment>
        <translation>Distribution étendue</translation>
    </message>
    <message>
        <source>KENP reads</source>
        <extracomment>A row of the sales breakdown: pages read through the subscription lending programme; KENP is a unit name that normally stays as it is</extracomment>
        <translation>Pages KENP lues</translation>
    </message>
    <message>
        <source>Upcoming pre-orders</source>
        <extracomment>A row of the sales breakdown: pre-orders of books not yet released</extracomment>
        <translation>Précommandes à venir</translation>
    </message>
    <message>
        <source>Free ebooks</source>
        <extracomment>A row of the sales breakdown: ebooks downloaded for free</extracomment>
        <translation>E-books gratuits</translation>
    </message>
    <message numerus="yes">
        <source>%1 pages</source>
        <extracomment>Pages read through the subscription lending programme, %1 being the count. English keeps &quot;pages&quot; even for 1; other languages use their plural forms</extracomment>
        <translation>
            <numerusform>%1 page</numerusform>
            <numerusform>%1 pages</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 · same for all periods</source>
        <extracomment>%1 is a count of pre-ordered copies, such as &quot;2 units&quot;; the pre-orders do not depend on the period chosen</extracomment>
        <translation>%1 · quelle que soit la période</translation>
    </message>
    <message numerus="yes">
        <source>%1 downloads</source>
        <extracomment>Free ebook downloads, %1 being the count. English keeps &quot;downloads&quot; even for 1; other languages use their plural forms</extracomment>
        <translation>
            <numerusform>%1 téléchargement</numerusform>
            <numerusform>%1 téléchargements</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 unit(s)</source>
        <extracomment>Copies sold, %1 being the count: &quot;1 unit&quot;, &quot;1,234 units&quot;</extracomment>
        <translation>
            <numerusform>%1 exemplaire</numerusform>
            <numerusform>%1 exemplaires</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SalesMetricList</name>
    <message>
        <source>Changes the order of the sales breakdown</source>
        <extracomment>What a metric&apos;s move-up and move-down buttons do, for screen readers</extracomment>
        <translation>Modifie l’ordre des ventes par format</translation>
    </message>
</context>
<context>
    <name>SalesMetricSettingsModel</name>
    <message>
        <source>Move %1 up</source>
        <extracomment>Tool tip of the button that moves a row of sales up in the list: %1 is the row&apos;s title (&quot;Paid ebooks&quot;).</extracomment>
        <translation>Déplacer «&#xa0;%1&#xa0;» vers le haut</translation>
    </message>
    <message>
        <source>Move %1 down</source>
        <extracomment>Tool tip of the button that moves a row of sales down in the list: %1 is the row&apos;s title (&quot;Paid ebooks&quot;).</extracomment>
        <translation>Déplacer «&#xa0;%1&#xa0;» vers le bas</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Back</source>
        <extracomment>Tool tip of the arrow button that leaves the settings page</extracomment>
        <translation>Retour</translation>
    </message>
    <message>
        <source>Settings</source>
        <extracomment>Title of the settings page</extracomment>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Server URL</source>
        <translation>URL du serveur</translation>
    </message>
    <message>
        <source>Change this to https://… for production</source>
        <extracomment>Hint below the server address; keep https:// as it is</extracomment>
        <translation>Remplacez par https://… en production</translation>
    </message>
    <message>
        <source>API key</source>
        <extracomment>Field title above the key that gives Inkwarden access to the account</extracomment>
        <translation>Clé d’API</translation>
    </message>
    <message>
        <source>Account</source>
        <extracomment>Field title above the choice of the publishing account whose royalties are shown</extracomment>
        <translation>Compte</translation>
    </message>
    <message>
        <source>Loading account…</source>
        <translation>Chargement du compte…</translation>
    </message>
    <message>
        <source>Reload accounts</source>
        <translation>Recharger les comptes</translation>
    </message>
    <message>
        <source>Show in menu bar</source>
        <extracomment>Field title: which royalty figure the panel shows beside its icon</extracomment>
        <translation>Afficher dans le panneau</translation>
    </message>
    <message>
        <source>This also controls the large highlighted amount</source>
        <translation>Détermine aussi le grand montant mis en avant</translation>
    </message>
    <message>
        <source>Displayed royalty</source>
        <extracomment>Accessible name of the picker choosing which royalty figure is displayed</extracomment>
        <translation>Redevance affichée</translation>
    </message>
    <message>
        <source>Refresh automatically</source>
        <extracomment>Field title above the choice of how often the royalties are fetched</extracomment>
        <translation>Actualisation automatique</translation>
    </message>
    <message>
        <source>Inkwarden allows no more than one request every 3 seconds</source>
        <translation>Inkwarden n’autorise pas plus d’une requête toutes les 3&#xa0;secondes</translation>
    </message>
    <message>
        <source>Refresh interval</source>
        <translation>Fréquence d’actualisation</translation>
    </message>
    <message>
        <source>Sales breakdown</source>
        <extracomment>Field title above the list of book formats shown in the dashboard&apos;s sales breakdown</extracomment>
        <translation>Ventes par format</translation>
    </message>
    <message>
        <source>Choose which formats appear and arrange them in your preferred order</source>
        <translation>Choisissez les formats affichés et leur ordre</translation>
    </message>
    <message>
        <source>Start automatically</source>
        <extracomment>Field title above the switch that starts Inkwarden when the user logs in</extracomment>
        <translation>Démarrage automatique</translation>
    </message>
    <message>
        <source>Open Inkwarden at login</source>
        <translation>Ouvrir Inkwarden à la connexion</translation>
    </message>
    <message>
        <source>Approval required</source>
        <extracomment>Title of a notice: the desktop must approve starting Inkwarden at login</extracomment>
        <translation>Autorisation requise</translation>
    </message>
    <message>
        <source>Notifications</source>
        <translation>Notifications</translation>
    </message>
    <message>
        <source>When a refresh finds new royalties for today or this month</source>
        <translation>Quand une actualisation trouve de nouvelles redevances pour aujourd’hui ou ce mois-ci</translation>
    </message>
    <message>
        <source>Notify on new royalties</source>
        <translation>Signaler les nouvelles redevances</translation>
    </message>
    <message>
        <source>Play a sound</source>
        <extracomment>Switch: play a sound with the notification</extracomment>
        <translation>Émettre un son</translation>
    </message>
    <message>
        <source>Quiet hours</source>
        <extracomment>Switch: a daily span of time without notifications</extracomment>
        <translation>Ne pas déranger</translation>
    </message>
    <message>
        <source>From</source>
        <extracomment>Label before the start time of the quiet hours, read as &quot;From [time] to [time]&quot;</extracomment>
        <translation>De</translation>
    </message>
    <message>
        <source>Quiet hours start</source>
        <translation>Début du mode Ne pas déranger</translation>
    </message>
    <message>
        <source>to</source>
        <extracomment>Label between the start and end times of the quiet hours, read as &quot;From [time] to [time]&quot;</extracomment>
        <translation>à</translation>
    </message>
    <message>
        <source>Quiet hours end</source>
        <translation>Fin du mode Ne pas déranger</translation>
    </message>
    <message>
        <source>Tell me what came in when they end</source>
        <extracomment>Switch: when the quiet hours end, one notification sums up the royalties that came in during them</extracomment>
        <translation>Résumer les redevances à la fin</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Confidentialité</translation>
    </message>
    <message>
        <source>Every amount shows as $•••, in the panel too, for a screen that others see</source>
        <extracomment>Hint below the Hide amounts switch; the dollar sign with three bullets shows how a hidden amount looks</extracomment>
        <translation>Chaque montant s’affiche sous la forme $•••, y compris dans le panneau, pour un écran visible par d’autres</translation>
    </message>
    <message>
        <source>Hide amounts</source>
        <translation>Masquer les montants</translation>
    </message>
    <message>
        <source>Version</source>
        <extracomment>Field title above the installed version of Inkwarden and the update buttons</extracomment>
        <translation>Version</translation>
    </message>
    <message>
        <source>Save settings</source>
        <translation>Enregistrer les paramètres</translation>
    </message>
    <message>
        <source>Sign out</source>
        <translation>Se déconnecter</translation>
    </message>
    <message>
        <source>Quit Inkwarden</source>
        <translation>Quitter Inkwarden</translation>
    </message>
</context>
<context>
    <name>SettingsViewModel</name>
    <message>
        <source>Loading accounts authorized by this API key</source>
        <extracomment>Hint under the account picker in the settings.</extracomment>
        <translation>Chargement des comptes autorisés par cette clé d’API</translation>
    </message>
    <message>
        <source>Account details could not be loaded</source>
        <extracomment>Hint under the account picker in the settings.</extracomment>
        <translation>Impossible de charger les détails du compte</translation>
    </message>
    <message>
        <source>Every 30 minutes</source>
        <extracomment>Choice of how often royalties are refreshed.</extracomment>
        <translation>Toutes les 30&#xa0;minutes</translation>
    </message>
    <message>
        <source>Every hour</source>
        <extracomment>Choice of how often royalties are refreshed.</extracomment>
        <translation>Toutes les heures</translation>
    </message>
    <message>
        <source>Every 2 hours</source>
        <extracomment>Choice of how often royalties are refreshed.</extracomment>
        <translation>Toutes les 2&#xa0;heures</translation>
    </message>
    <message>
        <source>Every 3 hours</source>
        <extracomment>Choice of how often royalties are refreshed.</extracomment>
        <translation>Toutes les 3&#xa0;heures</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>Loading</source>
        <extracomment>Accessible name of a turning progress mark shown while something loads</extracomment>
        <translation>Chargement</translation>
    </message>
</context>
<context>
    <name>StatusCommand</name>
    <message>
        <source>Inkwarden did not tell its status: %1</source>
        <extracomment>Printed by `inkwarden --status`: %1 is the reason the session bus gave.</extracomment>
        <translation>Inkwarden n’a pas indiqué son état&#xa0;: %1</translation>
    </message>
    <message>
        <source>Inkwarden is starting and has no status yet.</source>
        <extracomment>Printed by `inkwarden --status`.</extracomment>
        <translation>Inkwarden démarre et n’a pas encore d’état.</translation>
    </message>
    <message>
        <source>There is no session bus to find Inkwarden on.</source>
        <extracomment>Printed by `inkwarden --status --follow` when there is no D-Bus session bus.</extracomment>
        <translation>Aucun bus de session n’est disponible pour trouver Inkwarden.</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>&amp;Open Inkwarden</source>
        <extracomment>Entry of the panel icon&apos;s menu: shows the popover with the royalties. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>&amp;Ouvrir Inkwarden</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <extracomment>Entry of the panel icon&apos;s menu: fetches the royalties again now. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>&amp;Actualiser</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <extracomment>Entry of the panel icon&apos;s menu: opens Inkwarden&apos;s settings. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>&amp;Paramètres</translation>
    </message>
    <message>
        <source>&amp;Hide amounts</source>
        <extracomment>Check box entry of the panel icon&apos;s menu: hides the money figures next to the icon and in the popover. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>&amp;Masquer les montants</translation>
    </message>
    <message>
        <source>&amp;Quit Inkwarden</source>
        <extracomment>Entry of the panel icon&apos;s menu: ends Inkwarden. The &amp; marks the access key, unique within this menu.</extracomment>
        <translation>&amp;Quitter Inkwarden</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Inkwarden is not running.</source>
        <extracomment>Printed by `inkwarden --status`, and the tool tip of a bar&apos;s module, while Inkwarden does not run.</extracomment>
        <translation>Inkwarden n’est pas lancé.</translation>
    </message>
</context>
<context>
    <name>StatusNotifierItem</name>
    <message>
        <source>Inkwarden Royalties</source>
        <extracomment>Tool tip of the panel icon before any figure is known.</extracomment>
        <translation>Redevances Inkwarden</translation>
    </message>
</context>
<context>
    <name>TrayIconStatusItem</name>
    <message>
        <source>Inkwarden Royalties</source>
        <extracomment>Tool tip of the panel icon before any figure is known.</extracomment>
        <translation>Redevances Inkwarden</translation>
    </message>
</context>
<context>
    <name>UpdateViewModel</name>
    <message>
        <source>Inkwarden %1 is available</source>
        <extracomment>Title of the update banner: %1 is the new version number (&quot;1.5.0&quot;).</extracomment>
        <translation>Inkwarden %1 est disponible</translation>
    </message>
    <message>
        <source>You have version %1</source>
        <extracomment>Under the update banner&apos;s title: %1 is the running version number (&quot;1.4.0&quot;).</extracomment>
        <translation>Vous avez la version %1</translation>
    </message>
    <message>
        <source>You are using version %1. %2</source>
        <extracomment>Update prompt: %1 is the running version number (&quot;1.4.0&quot;), %2 the question whether to download the new version.</extracomment>
        <translation>Vous utilisez la version %1. %2</translation>
    </message>
    <message>
        <source>Inkwarden %1</source>
        <extracomment>In the settings: %1 is the running version number (&quot;1.4.0&quot;).</extracomment>
        <translation>Inkwarden %1</translation>
    </message>
    <message>
        <source>Version %1 is available</source>
        <extracomment>In the settings: %1 is the new version number (&quot;1.5.0&quot;).</extracomment>
        <translation>Version %1 disponible</translation>
    </message>
    <message>
        <source>You’re up to date</source>
        <extracomment>In the settings, once the update check found no newer version.</extracomment>
        <translation>Inkwarden est à jour</translation>
    </message>
    <message>
        <source>Checking…</source>
        <extracomment>Title of the check-for-updates button while the check is under way.</extracomment>
        <translation>Vérification…</translation>
    </message>
    <message>
        <source>Check for updates</source>
        <extracomment>Button in the settings.</extracomment>
        <translation>Vérifier les mises à jour</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <extracomment>Title of the install-update button while the update downloads.</extracomment>
        <translation>Téléchargement…</translation>
    </message>
    <message>
        <source>Install update</source>
        <extracomment>Button that downloads and opens the new version&apos;s installer.</extracomment>
        <translation>Installer la mise à jour</translation>
    </message>
</context>
<context>
    <name>XdgAutostart</name>
    <message>
        <source>“%1” is a file, not a folder</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path.</extracomment>
        <translation>«&#xa0;%1&#xa0;» est un fichier, pas un dossier</translation>
    </message>
    <message>
        <source>could not create the folder “%1”: %2</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path, %2 the system&apos;s reason.</extracomment>
        <translation>impossible de créer le dossier «&#xa0;%1&#xa0;»&#xa0;: %2</translation>
    </message>
    <message>
        <source>Inkwarden could not tell where its own program is</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end).</extracomment>
        <translation>Inkwarden n’a pas pu déterminer l’emplacement de son propre programme</translation>
    </message>
    <message>
        <source>the program “%1” is missing or not executable</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path.</extracomment>
        <translation>le programme «&#xa0;%1&#xa0;» est absent ou n’est pas exécutable</translation>
    </message>
    <message>
        <source>could not write “%1”: %2</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path, %2 the system&apos;s reason.</extracomment>
        <translation>impossible d’écrire «&#xa0;%1&#xa0;»&#xa0;: %2</translation>
    </message>
    <message>
        <source>could not save “%1”: %2</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path, %2 the system&apos;s reason.</extracomment>
        <translation>impossible d’enregistrer «&#xa0;%1&#xa0;»&#xa0;: %2</translation>
    </message>
    <message>
        <source>could not remove “%1”: %2</source>
        <extracomment>Why Open at Login could not be changed, for the middle of a sentence (no capital letter at the start, no full stop at the end). %1 is a path, %2 the system&apos;s reason.</extracomment>
        <translation>impossible de supprimer «&#xa0;%1&#xa0;»&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Unknown</source>
        <extracomment>What `inkwarden --version` shows in place of the version number when the build has none.</extracomment>
        <translation>version inconnue</translation>
    </message>
    <message>
        <source>Print the running Inkwarden&apos;s panel title and exit; exits with status 3 when Inkwarden is not running.</source>
        <extracomment>Description of the --status option in `inkwarden --help`.</extracomment>
        <translation>Affiche le titre qu’Inkwarden montre dans le panneau, puis quitte&#x202f;; renvoie le code de sortie 3 si Inkwarden n’est pas lancé.</translation>
    </message>
    <message>
        <source>With --status: text (the default), waybar (JSON for waybar&apos;s custom modules) or genmon (for xfce4-genmon-plugin).</source>
        <extracomment>Description of the --format option in `inkwarden --help`. Keep the option and format names (--status, text, waybar, genmon, xfce4-genmon-plugin) as they are.</extracomment>
        <translation>Avec --status&#xa0;: text (par défaut), waybar (JSON pour les modules personnalisés de waybar) ou genmon (pour xfce4-genmon-plugin).</translation>
    </message>
    <message>
        <source>format</source>
        <extracomment>The value&apos;s name after --format in `inkwarden --help` (&quot;--format &lt;format&gt;&quot;).</extracomment>
        <translation>format</translation>
    </message>
    <message>
        <source>With --status: keep running and print a new line on every change, waiting for Inkwarden while it is not running.</source>
        <extracomment>Description of the --follow option in `inkwarden --help`.</extracomment>
        <translation>Avec --status&#xa0;: continue de s’exécuter et affiche une nouvelle ligne à chaque changement, en attendant Inkwarden tant qu’il n’est pas lancé.</translation>
    </message>
    <message>
        <source>Your book royalties at a glance, in the panel.</source>
        <extracomment>The first line of `inkwarden --help`.</extracomment>
        <translation>Les redevances de vos livres en un coup d’œil, dans le panneau.</translation>
    </message>
    <message>
        <source>An inkwarden:// address to open, such as the browser&apos;s sign-in.</source>
        <extracomment>Description of the address argument in `inkwarden --help`. Keep &quot;inkwarden://&quot; as it is.</extracomment>
        <translation>Une adresse inkwarden:// à ouvrir, comme celle de la connexion par le navigateur.</translation>
    </message>
    <message>
        <source>Unknown format &quot;%1&quot;: use text, waybar or genmon.</source>
        <extracomment>Printed by `inkwarden --status --format …`: %1 is the format asked for. Keep text, waybar and genmon as they are.</extracomment>
        <translation>Format «&#xa0;%1&#xa0;» inconnu&#xa0;: utilisez text, waybar ou genmon.</translation>
    </message>
    <message>
        <source>--status takes no address.</source>
        <extracomment>Printed by `inkwarden --status` given an address as well.</extracomment>
        <translation>--status n’accepte pas d’adresse.</translation>
    </message>
    <message>
        <source>Inkwarden is already running but could not be reached.</source>
        <extracomment>Printed to the terminal when a second Inkwarden is started and the first does not answer.</extracomment>
        <translation>Inkwarden est déjà lancé mais ne répond pas.</translation>
    </message>
</context>
</TS>
