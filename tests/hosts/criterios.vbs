' A host in a script that opens the five criteria dialogs over a class of two fields; codes have no digits.
Option Explicit

Class Campo
    Public Name
    Public Caption
End Class

Class Campos
    Public Property Get Count
        Count = 2
    End Property
    Public Function Item(numero)
        Dim uno
        Set uno = New Campo
        uno.Name = "codigo"
        If numero = 1 Then uno.Name = "nombre"
        uno.Caption = UCase(uno.Name)
        Set Item = uno
    End Function
End Class

Class Frutas
    Public AbsolutePosition
    Public Guardado
    Public Property Get sClassName
        sClassName = "frutas"
    End Property
    Public Property Get RecordCount
        RecordCount = 1
    End Property
    Public Property Get BOF
        BOF = False
    End Property
    Public Property Get EOF
        EOF = False
    End Property
    Public Property Get Fields
        Set Fields = New Campos
    End Property
    Public Sub MoveFirst
    End Sub
    Public Sub MoveNext
    End Sub
    Public Function ValidaKey(caja, tecla)
        ValidaKey = Not IsNumeric(Chr(tecla))
    End Function
    Public Function ValidaDefinedSize(caja)
        ValidaDefinedSize = 10
    End Function
    Public Function ValidaValue(caja)
        ValidaValue = True
    End Function
    Public Function CreateFilter(control, indice)
        If control.Text <> "" Then CreateFilter = control.DataField & "=" & control.Text
        WScript.Echo "CreateFilter " & control.Name & " " & control.Index & " " & TypeName(indice) & " " & indice
    End Function
    Public Sub SetFilter(texto, hueco)
        WScript.Echo "SetFilter " & texto & " " & hueco
        Guardado = texto
    End Sub
    Public Function GetFilter(hueco)
        GetFilter = Guardado
    End Function
    Public Sub AplyFilter(texto)
        WScript.Echo "AplyFilter " & texto
    End Sub
    Public Sub Requery(consulta)
        WScript.Echo "Requery " & consulta
    End Sub
    Public Sub AceptarBuscar
        WScript.Echo "AceptarBuscar"
    End Sub
End Class

Dim datos, dialogos
Set datos = New Frutas
datos.AbsolutePosition = 1
Set dialogos = CreateObject("Tamvelo.ClsShowSerch")
dialogos.ShowSeleccionar datos, datos
dialogos.ShowSeleccionarComp datos, datos
dialogos.ShowSelecMinim datos, datos
dialogos.ShowSelecLab datos, datos
dialogos.ShowSeleccionarRecibo datos, datos
